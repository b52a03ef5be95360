"""Prints, as JSON, what configparser reads of each INI file in a folder: entries as section/key=value, or an error."""

import configparser
import json
import pathlib
import sys


def entries(path):
    parser = configparser.ConfigParser()
    try:
        with open(path, encoding="utf-8") as file:
            parser.read_file(file)
        return [f"{section}/{key}={parser[section][key]}" for section in parser.sections() for key in parser[section]]
    except configparser.Error as error:
        return [type(error).__name__]


print(json.dumps([entries(path) for path in sorted(pathlib.Path(sys.argv[1]).iterdir())]))
