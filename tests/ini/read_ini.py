"""Prints the entries of an INI file as section/key=value, a line each."""

import configparser
import sys

parser = configparser.RawConfigParser()
parser.optionxform = str
with open(sys.argv[1], encoding="utf-8") as file:
    parser.read_file(file)
for section in parser.sections():
    for key, value in parser.items(section):
        print(f"{section}/{key}={value}")
