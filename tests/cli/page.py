#!/usr/bin/env python3
"""Uses the pages in a folder as people do, in headless Chromium: page.py FOLDER. Leaves screenshots there."""

import json
import os
import pathlib
import re
import sys
import time

from selenium import webdriver
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.chrome.service import Service

failures = []


def check(what, found, expected):
    if found != expected:
        failures.append(what)
        print(f"FAILED {what}: {found!r} instead of {expected!r}")


def check_soon(what, find, expected):
    """For what the page does a little later."""
    for _ in range(200):
        if find() == expected:
            return
        time.sleep(0.1)
    check(what, find(), expected)


def start_browser():
    options = webdriver.ChromeOptions()
    options.binary_location = "/usr/bin/chromium"
    for argument in ("--headless=new", "--no-sandbox", "--disable-dev-shm-usage", "--hide-scrollbars"):
        options.add_argument(argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    browser = webdriver.Chrome(options=options, service=Service("/usr/bin/chromedriver"))
    browser.set_script_timeout(600)
    return browser


class Page:
    """One page in the browser, with what is on it."""

    def __init__(self, browser, folder, name):
        self.browser = browser
        self.folder = folder
        self.name = name
        self.address = pathlib.Path(folder, name + ".html").absolute().as_uri()
        self.open()

    def open(self, fragment="", size=(1400, 950)):
        self.browser.set_window_size(*size)
        self.browser.get("about:blank")
        self.browser.get(self.address + fragment)

    def find(self, selector):
        return self.browser.find_element(By.CSS_SELECTOR, selector)

    def texts(self, selector):
        return [element.text for element in self.browser.find_elements(By.CSS_SELECTOR, selector)]

    def is_shown(self, selector):
        return self.find(selector).is_displayed()

    def run(self, script):
        return self.browser.execute_script(script)

    def data(self):
        return json.loads(self.find("#data").get_attribute("textContent"))

    def press(self, *keys):
        ActionChains(self.browser).send_keys(*keys).perform()

    def press_with_control(self, key):
        ActionChains(self.browser).key_down(Keys.CONTROL).send_keys(key).key_up(Keys.CONTROL).perform()

    def filter(self, text):
        self.find("#filter").clear()
        self.find("#filter").send_keys(text)

    def active_option(self):
        return self.find("#" + self.find("#list").get_attribute("aria-activedescendant"))

    def drawn_refs(self):
        return self.run("return Array.from(document.querySelectorAll('#drawing .switch .ref'), (e) => e.textContent)")

    def screenshot(self, name, size=(1400, 950)):
        self.browser.set_window_size(*size)
        time.sleep(0.3)
        self.browser.save_screenshot(os.path.join(self.folder, f"{self.name}-{name}.png"))

    def check_quiet(self):
        """Nothing on the console, and nothing asked for but the page itself."""
        check(f"{self.name}: console", [entry["message"] for entry in self.browser.get_log("browser")], [])
        asked = {
            message["params"]["request"]["url"].split("#")[0]
            for message in (json.loads(entry["message"])["message"] for entry in self.browser.get_log("performance"))
            if message["method"] == "Network.requestWillBeSent"
        }
        check(f"{self.name}: requests", asked - {self.address, "about:blank"}, set())


def refs_of(data, route):
    return [data["components"][data["crossings"][place]["component"]]["ref"] for place in route["crossings"]]


CHOOSE_EACH = """
    const texts = (selector) => Array.from(document.querySelectorAll(selector), (element) => element.textContent);
    return arguments[0].map((place) => {
        list.choose(place);
        return [texts('#drawing .switch .ref'), texts('#drawing .connection').length, texts('#steps > li').length,
            texts('#drawing .plug title').filter((title) => !title.includes(': ')).length];
    });"""


def check_every_drawing(page, places, shown_refs=refs_of):
    """The drawing and the steps show the components of the route in order, its side connections and known plugs."""
    data = page.data()
    for place, found in zip(places, page.browser.execute_script(CHOOSE_EACH, list(places)), strict=True):
        route = data["routes"][place]
        check(f"{page.name}: route {place + 1}", found,
              [shown_refs(data, route), len(route["connections"]), len(route["crossings"]) + 2, 0])


def check_demo(page):
    data = page.data()
    check("heading", page.find("h1").text, "U2#1.HI \u2192 J2#3.OUT")
    check("count", page.find("#count").text, "548 routes")
    check("first route", page.drawn_refs(), ["K1#1", "K307#2"])
    check("focus", page.run("return document.activeElement.id"), "list")
    page.screenshot("light")

    check("one row", page.run("return document.querySelectorAll('#drawing .turn').length"), 0)
    page.press(Keys.ARROW_DOWN)
    check("arrow", page.find("#title").text, "Route 2: 2 switches")
    check("resistor", page.find("#route-summary").text.split("\n")[0], "Relays to set: K307#2; also through R3#1")
    check_soon("address", lambda: page.run("return location.hash"), "#route=2")
    page.press(Keys.END)
    check("end", page.active_option().get_attribute("aria-posinset"), "548")
    check("label of the last", page.active_option().get_attribute("aria-label").split(";")[0], "Route 548")
    page.screenshot("last")
    page.press(Keys.PAGE_UP, Keys.HOME)
    check("home", page.find("#title").text, "Route 1: 2 switches")
    page.find("#next").click()
    check("next", page.find("#title").text, "Route 2: 2 switches")
    page.find("#route-4").click()
    check("click", page.active_option().get_attribute("id"), "route-4")
    check("click is drawn", page.drawn_refs(), refs_of(data, data["routes"][3]))

    page.press("/", "K1 -k307 ")
    check("slash", page.run("return document.activeElement.id"), "filter")
    ways = [refs_of(data, route) for route in data["routes"]]
    expected = [place for place, refs in enumerate(ways) if "K1#1" in refs and "K307#2" not in refs]
    check("filter", page.find("#count").text, f"{len(expected)} of 548 routes")
    check("filtered route", (3 in expected, page.find("#title").text.split(":")[0]), (True, "Route 4"))
    page.screenshot("filtered")
    check_soon("filter in the address", lambda: page.run("return location.hash"), "#route=4&filter=K1+-k307+")
    page.open("#route=4&filter=K1+-k307+")
    check("filter from the address", page.find("#count").text, f"{len(expected)} of 548 routes")
    page.filter("-k1 *3*7 r*")
    expected = [refs for refs in ways if "K1#1" not in refs and any(re.fullmatch(r".*3.*7(#\d+)?", ref) for ref in refs)
                and any(ref.startswith("R") for ref in refs)]
    check("stars", page.find("#count").text, f"{len(expected)} of 548 routes")
    check_stars(page)
    page.filter("K1 nothing")
    check("nothing found", page.find("#count").text, "No route passes these filters")
    check("nothing shown", page.is_shown("#shown"), False)
    page.screenshot("nothing")
    page.find("#clear").click()
    check("cleared", page.find("#count").text, "548 routes")
    fours = sum(len(route["crossings"]) == 4 for route in data["routes"])
    page.find("#switches button[data-switches='4']").click()
    check("switches", page.find("#count").text, f"{fours} of 548 routes")
    page.find("#alone").click()
    page.find("#switches button[data-switches='4']").click()
    alone = sum(not route["connections"] for route in data["routes"])
    check("without side connections", page.find("#count").text, f"{alone} of 548 routes")
    page.find("#clear").click()
    page.browser.find_element(By.XPATH, "//ol[@id='steps']//button[text()='Without']").click()
    check("button", page.find("#filter").get_attribute("value")[0], "-")
    page.find("#clear").click()

    page.find("#theme").click()
    check("dark", page.run("return document.documentElement.dataset.theme"), "dark")
    page.open("#route=548")
    check("dark stays", page.run("return document.documentElement.dataset.theme"), "dark")
    page.screenshot("dark")
    page.screenshot("dark-narrow", (420, 900))
    page.find("#theme").click()
    page.screenshot("narrow", (420, 900))
    page.run("document.getElementById('shown').scrollIntoView()")
    page.screenshot("narrow-drawing", (420, 900))
    page.screenshot("wide", (2200, 1100))
    page.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": "print"})
    printed = [part for part in ("#choice", "#drawing", "#steps", "#print") if page.is_shown(part)]
    check("printed", printed, ["#drawing", "#steps"])
    page.screenshot("print", (800, 1100))
    page.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": ""})
    page.browser.set_window_size(1400, 950)
    check_every_drawing(page, range(len(data["routes"])))
    check_copying(page)


def check_stars(page):
    """The filter agrees with the plainest pattern on all short texts, and many stars take no time."""
    check("short filters", page.run("""
        const all = (letters) => {
            const texts = [''];
            for (const text of texts)
                if (text.length < 5)
                    texts.push(...Array.from(letters, (letter) => text + letter));
            return texts;
        };
        return all('ab*').filter((filter) => {
            const pattern = new RegExp(`^${filter.replaceAll('*', '.*')}$`);
            return all('ab').some((text) => fits(filter.split('*'), text) !== pattern.test(text));
        });"""), [])
    check("many stars", page.run("return fits(('*a'.repeat(9) + '*b').split('*'), 'a'.repeat(100000))"), False)
    check("case", page.run("return ['k\u2126', '\u03c2', '\u00b5'].map(withoutCase).join()"),
          "k\u03c9,\u03c3,\u03bc")


def copied(page, button):
    page.browser.execute_cdp_cmd("Browser.grantPermissions", {"permissions": ["clipboardReadWrite"]})
    page.find(button).click()
    return page.browser.execute_async_script(
        "navigator.clipboard.readText().then(arguments[0], (error) => arguments[0](String(error)))")


def check_copying(page):
    page.open("#route=2")
    check("button for relays", page.find("#copy-set").text, "Copy relays")
    check("copied relays", copied(page, "#copy-set"), "K307#2")
    text = copied(page, "#copy-text").split("\n")
    check("copied text", [line for line in text if not line.startswith(" ")], [
        "Route 2: U2#1.HI to J2#3.OUT, 2 switches", "U2#1.HI", "R3#1, Resistor, pin 1 to 2",
        "K307#2, Relay, set, pin 1 (A) to 2 (B)", "J2#3.OUT", ""])


def check_large(page):
    data = page.data()
    check("all there", page.find("#count").text, "10,000 routes")
    page.screenshot("light")
    page.press(Keys.END)
    check("last of many", page.find("#title").text.split(":")[0], "Route 10000")
    check("few rows", len(page.texts("[role=option]")) < 60, True)
    page.screenshot("last")
    way = page.active_option().find_element(By.CLASS_NAME, "way").get_attribute("textContent")
    check("end in the list", way.split("\u2192")[-1], refs_of(data, data["routes"][-1])[-1])
    hidden = "Array.from(document.querySelectorAll('.way')).filter((way) => way.scrollHeight > way.clientHeight + 1)"
    check("no end is hidden", page.run(f"return {hidden}.length"), 0)
    page.run("document.getElementById('list').scrollTop = 4168 * rowHeight")
    check_soon("scrolled", lambda: page.run("return document.getElementById('route-4170') !== null"), True)
    check("the active row exists", page.active_option().get_attribute("aria-posinset"), "10000")
    check_every_drawing(page, range(0, 10000, 499))
    check_board_colours(page)
    wanted = refs_of(data, data["routes"][5000])[2]
    page.filter(wanted)
    count = sum(wanted in refs_of(data, route) for route in data["routes"])
    check("large filter", page.find("#count").text, f"{count:,} of 10,000 routes")
    page.screenshot("filtered")
    page.find("#theme").click()
    page.screenshot("dark")
    check_board_colours(page)
    page.find("#theme").click()
    report_speed(page)


def check_board_colours(page):
    colours = page.run("return Array.from(document.querySelectorAll('#boards span'), (board) => "
                       "getComputedStyle(board).backgroundColor)")
    check("a colour for each board", len(set(colours)), 8)


def report_speed(page):
    """Not checked, since it depends on the machine."""
    page.open()
    timed = """
        const times = [];
        for (let i = 0; i < 20; ++i) {
            const start = performance.now();
            %s
            document.body.offsetHeight;
            times.push(performance.now() - start);
        }
        return times.sort((a, b) => a - b)[10].toFixed(1) + ' ms, at most ' + times[19].toFixed(1) + ' ms';"""
    print("10,000 routes:")
    for what, script in (("filter", "filters.text = i % 2 ? 'K416' : '-K416 K1*'; applyFilters();"),
                         ("filter, without drawing",
                          "filtered({ text: '-K416 K1*', switches: new Set([5, 7]), alone: false });"),
                         ("next route", "list.step(1);"),
                         ("scroll by 100 rows", "list.element.scrollTop = i * 4000; list.drawRows();")):
        print(f"  {what}: median", page.run(timed % script))
    load = "const e = performance.getEntriesByType('navigation')[0]; return e.domComplete.toFixed(0) + ' ms'"
    print("  loaded in", page.run(load))


SYMBOLS = """
    return Array.from(document.querySelectorAll('#drawing .switch'), (element) => [
        element.querySelector('.task').textContent, element.querySelector('.coil').classList[1],
        /H/.test(element.querySelector('path.symbol').getAttribute('d')) ? 'closed' : 'open']);"""


def check_relays(page):
    check("positions", page.find("#route-summary").text, "Relays to set: K703#2=CH3; to stay at rest: K701#2")
    check("contacts", page.run(SYMBOLS), [["rest", "rest", "closed"], ["CH3", "set", "closed"]])
    check("left out", "left out: 4 ways as drawn" in page.find("#summary").text, True)
    check("marks in the list", page.texts(".way small"), ["#2 (rest)", "#2=CH3"])
    check("copied position", copied(page, "#copy-set"), "K703#2=CH3")
    copied_lines = copied(page, "#copy-text").split("\n")
    check("copied text of positions", [line for line in copied_lines if line.startswith("K7")], [
        "K701#2, Relay, stays at rest, pin 11 to 12", "K703#2, Relay, set to CH3, pin C (COM) to 3 (CH3)"])
    page.screenshot("light")
    page.run("data.crossings[0].position = null; data.crossings[0].isUnknown = true;"
             "describedRoute = -1; showRoute(0);")
    check("unknown", page.find("#route-summary").text,
          "Relays to set: K703#2=CH3; crossed as drawn, since nobody knows the positions: K701#2")
    check("unknown contact", page.run(SYMBOLS)[0], ["?", "unknown", "open"])
    page.find("#theme").click()
    page.screenshot("dark")
    page.find("#theme").click()


def check_drawn(page):
    check("ways as drawn", page.find("#summary").text.split(".")[0], "5 routes as drawn")
    check("as drawn", page.find("#route-summary").text, "Relays to set: K701#2, K703#2")
    check("contacts as drawn", page.run(SYMBOLS), [["", "drawn", "open"], ["", "drawn", "open"]])


def check_direct(page):
    check("direct", page.find("#title").text, "Route 1: no switch")
    check("nothing to filter", page.is_shown("#switches"), False)
    check("two ends", len(page.texts("#drawing .end")), 2)
    page.screenshot("light")


def check_fuse(page):
    check("other type", page.find("#route-summary").text.split("\n")[0], "Switches: F1#1 (Fuse)")
    check("button for other types", page.find("#copy-set").text, "Copy switches")
    check("copied switches", copied(page, "#copy-set"), "F1#1")


def check_none(page):
    check("none", page.find("#none h2").text, "No route within the limits")
    check("reason", page.find("#none li:nth-child(4)").text, "in between, but not switchable: F1#1 (CompType Fuse)")
    check("no list", page.is_shown("#choice"), False)
    page.screenshot("light")


def check_hostile(page):
    check("nothing came to life", page.run("return window.broken === undefined && "
                                           "document.querySelector('img, iframe, b') === null"), True)
    names = page.run("return Array.from(document.querySelectorAll('#drawing .name'), (name) => name.textContent)")
    check("a name that looks joined", names[0], "@data@+#1+${x}")
    check("a position", page.texts("#drawing .task.set")[1], "<b>'\"on")
    check_every_drawing(page, range(2), lambda data, route: [
        ref if len(ref) < 20 else "R_with_a_name_t\u2026" for ref in refs_of(data, route)])
    page.screenshot("light")
    page.screenshot("narrow", (420, 900))


def check_state(page):
    check("steps", page.texts("#list [role=option]"), ["measure\n2 relays", "short\n5 relays\n\u2715 4", "rest\n0 relays"])
    check("summary", page.find("#summary").text, "3 steps; 1 not as expected")
    check("first step", (page.find("#title").text, page.find("#relays").text),
          ("Step measure", "Relays set: K1#1, K307#2"))
    check("as expected", page.texts("#problems li"), ["As expected: 1 connection, and no short"])
    check("tied", page.texts("#sets li")[3], "4 J2#3.OUT, U2#1.HI")
    check("coupled", page.texts("#couplings li"),
          ["U1#1.CHASSIS, U3#1.GND, U4#1.GND, U6#1.CHASSIS | U4#1.OUT by R5#1"])
    check("focus", page.run("return document.activeElement.id"), "list")
    page.press(Keys.ARROW_DOWN)
    check("arrow", page.find("#title").text, "Step short")
    check("address", page.run("return location.hash"), "#step=2")
    check("problems", [text.split("\n")[0] for text in page.texts("#problems li")][:2],
          ["missing U4#1.OUT to J1#3.VCC", "short J1#3.VCC | U5#1.OUT+"])
    check("relays on their boards", page.texts(".frame .chip"),
          ["K1#1 3", "K301#2 3", "K305#2 3", "K307#2 3", "K703#2=CH2 4"])
    check("pins of the meter", page.texts(".frame:first-child .card:nth-child(2) > ul > li"),
          ["3 HI", "4 SENSE_HI", "4 SENSE_LO"])
    page.screenshot("light")
    page.find("#sets li:nth-child(3) button").click()
    check("one set alone", page.run("return [...document.querySelectorAll('.chip .set.faded')].map((e) => e.textContent)"),
          ["4"])
    page.screenshot("alone")
    page.find("#wrong").click()
    check("wrong steps", page.texts("#list [role=option] .step-name"), ["short"])
    page.find("#wrong").click()
    page.find("#theme").click()
    page.screenshot("dark")
    page.screenshot("dark-narrow", (420, 900))
    page.find("#theme").click()
    page.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": "print"})
    check("printed", [part for part in ("#choice", "#system", "#sets", "#print") if page.is_shown(part)],
          ["#system", "#sets"])
    page.screenshot("print", (800, 1100))
    page.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": ""})
    page.open("#step=3")
    check("rest", page.find("#relays").text, "All relays at rest")


def check_state_hostile(page):
    check("nothing came to life", page.run("return window.broken === undefined && "
                                           "document.querySelector('img, iframe, b') === null"), True)
    page.screenshot("light")


def check_state_large(page):
    check("steps", page.find("#count").text, "200 steps")
    page.press(Keys.END)
    check("end", page.find("#title").text, "Step s199")
    page.screenshot("light")


def check_plan(page):
    check("steps", page.texts("#list [role=option]"),
          ["measure\n2 relays\n\u2713 optimal", "drive\n3 relays\n\u2713 optimal", "too much\n\u2715 impossible",
           "allowed\n1 relay\n\u2713 optimal", "rest\n0 relays\n\u2713 optimal"])
    check("summary", page.find("#summary").text, "5 steps: 4 optimal, 1 impossible")
    check_every_step(page)
    page.open("#step=2")
    check("result", page.find("#result").text, "\u2713 optimal 3 relays, 1 passive component, proven to be the fewest")
    check("change", page.texts("#change li"), ["To rest: K307#2, K501#2, K502#2", "To set: K101#2, K105#2, K703#2=CH1"])
    check("may touch", page.texts("#transients li"),
          ["may touch while relays go to rest: J1#3.VCC, J1#3.VCC_K, J2#3.VCC, J2#3.VCC_K, U5#1.OUT+ by K501#2+K502#2",
           "may touch while relays go to rest: J1#3.GND, J2#3.GND, U5#1.OUT- by K501#2+K502#2"])
    check("relays on their boards", page.texts(".frame .chip"), ["through R1#1 1", "K101#2 1", "K105#2 1", "K703#2=CH1 2"])
    check("pins on their boards", page.texts(".frame .card > ul > li"),
          ["1 FORCE_HI", "2 SENSE_HI", "1 IN_P", "2 SENSE+", "1 IN_P"])
    check("lines", page.texts(".frame .lines")[2], "1 COL1, COL5\n2 V_S+")
    check("group", page.texts("#sets > li")[0].split("\n")[0], "1 J1#3.IN_P, J2#3.IN_P, U1#1.FORCE_HI; through R1#1")
    page.screenshot("light")
    page.find("#sets > li:nth-child(2) button").click()
    check("one group alone", page.run("return document.querySelector('#sets > .faded button').textContent"), "1")
    page.find("#theme").click()
    page.screenshot("dark")
    page.screenshot("dark-narrow", (420, 900))
    page.open("#step=3")
    check("conflict", page.texts("#conflicting li")[3], "4 J1#3.OUT to J2#3.OUT tests/data/page_plan.csv:12")
    check("shortage", page.texts(".shortage"), ["4 groups need a line of their own, but there are only 3:"])
    check("lines that are too few", page.texts("#bottleneck .name"),
          ["/DMM1_HI#1+/ROW3#2", "/FGEN1_OUT#1+/ROW4#2", "/SMU1_FH#1+/ROW1#2"])
    page.screenshot("conflict-dark")
    page.find("#theme").click()
    page.find("#wrong").click()
    check("steps without a plan", page.texts("#list .step-name"), ["too much"])
    page.find("#side-by-side summary").click()
    check("side by side", page.texts("#relay-table tbody tr"),
          ["K101#2 1 1", "K105#2 1", "K307#2 1", "K501#2 2", "K502#2 3", "K703#2 2 CH1"])
    page.find("#relay-table th[data-step='1'] button").click()
    check("chosen column", page.texts("#relay-table th[data-chosen] button"), ["drive"])
    page.open("#step=2")
    page.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": "print"})
    check("printed", [part for part in ("#choice", "#system", "#sets", "#print") if page.is_shown(part)],
          ["#system", "#sets"])
    page.screenshot("print", (800, 1100))
    page.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": ""})


def check_plan_hostile(page):
    check_state_hostile(page)
    check_every_step(page)


SHOW_EACH = """
    const texts = (root, selector) => Array.from(root.querySelectorAll(selector), (element) => element.textContent);
    return data.steps.map((step, place) => {
        list.choose(place);
        const drawings = byId('plan').hidden ? [] : Array.from(document.querySelectorAll('#sets .way-drawing'));
        return drawings.map((drawing) => [texts(drawing, '.switch .ref').length,
            ...texts(drawing, '.end title').map((title) => title.split(', ')[0])]);
    });"""


def check_every_step(page):
    """Each connection is drawn from end to end, with as many components as it crosses."""
    data = page.data()
    for step, found in zip(data["steps"], page.run(SHOW_EACH), strict=True):
        expected = []
        for way in (way for group in step.get("groups", []) for way in group["ways"]):
            ends = [data["pins"][step["wanted"][way["connection"]][end]]["text"] for end in ("from", "to")]
            expected.append([len(way["crossings"]), f"From: {ends[0]}", f"To: {ends[1]}"])
        check(f"{page.name}: ways of {step['name']}", found, expected)


OPEN_EACH = """
    const texts = (selector) => Array.from(document.querySelectorAll(selector), (element) => element.textContent);
    return data.switches.map((row, source) => row.map((switches, dut) => {
        openPair({ source, dut });
        return byId('route').hidden ? null : [texts('#drawing .switch .ref'), texts('#drawing .end .ref'),
            texts('#drawing .connection').length, document.querySelectorAll('#steps > li').length];
    }));"""


def check_every_pair(page):
    """Whatever cell is opened, the drawing shows its first route, from its source pin to its DUT pin."""
    data = page.data()
    for row, (source, found) in enumerate(zip(data["sources"], page.run(OPEN_EACH), strict=True)):
        expected = []
        for dut, switches, route in zip(data["duts"], data["switches"][row], data["routes"][row], strict=True):
            check(f"{page.name}: {source['text']} to {dut['text']} has a route", route is None, switches is None)
            expected.append(route and [refs_of(data, {"crossings": route[1]}), [source["text"], dut["text"]],
                                       len(route[2]), switches + 2])
        check(f"{page.name}: routes of {source['text']}", found, expected)


LEAST_CONTRAST = """
    const bright = (colour) => colour.match(/[0-9.]+/g).slice(0, 3).map((part) => part / 255)
        .map((part) => part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4)
        .reduce((sum, part, i) => sum + part * [0.2126, 0.7152, 0.0722][i], 0);
    const contrasts = Array.from({ length: heatSteps }, (_, step) => {
        const sample = document.body.appendChild(html('span', { class: `heat-${step}` }, '1'));
        const { color, backgroundColor } = getComputedStyle(sample);
        sample.remove();
        const [dark, light] = [bright(color), bright(backgroundColor)].sort((a, b) => a - b);
        return (light + 0.05) / (dark + 0.05);
    });
    return Math.min(...contrasts);"""


def active_cell(page):
    return page.find("#" + page.find("#grid").get_attribute("aria-activedescendant"))


def check_coverage(page):
    check("reached", page.find("#summary").text.split(".")[0], "89 of 540 pairs of source and DUT pins have a route")
    check("focus", page.run("return document.activeElement.id"), "grid")
    check("size", [page.find("#grid").get_attribute(f"aria-{name}count") for name in ("row", "col")], ["34", "21"])
    page.press(Keys.ARROW_DOWN, Keys.END)
    check("cell", active_cell(page).get_attribute("aria-label"), "U1#1.SENSE_HI to J2#3.I_IN: no route")
    page.press(Keys.HOME, Keys.ARROW_RIGHT, Keys.ARROW_RIGHT, Keys.ARROW_RIGHT, Keys.ENTER)
    check("opened", page.find("#title").text, "U1#1.SENSE_HI \u2192 J1#3.IN_N: 4 switches")
    check("counted", page.texts("#facts p"), ["The first of 10 or more routes", "No route without: K601#2, R2#1"])
    check_soon("address", lambda: page.run("return location.hash"), "#pair=2+4")
    page.screenshot("light")
    page.press(Keys.ESCAPE)
    check("closed", page.is_shown("#route"), False)
    page.press_with_control(Keys.END)
    check("last row", active_cell(page).get_attribute("aria-label"), "U6#1.CHASSIS to J2#3.I_IN: no route")
    page.find("#cell-11-2").click()
    check("click", page.find("#title").text, "U3#1.OUT \u2192 J1#3.IN_P: 2 switches")
    page.open("#pair=2+4&sources=sense+-U2&switches=4+none")
    check("address read", page.find("#title").text, "U1#1.SENSE_HI \u2192 J1#3.IN_N: 4 switches")
    check("filtered", page.find("#count").text, "69 of 540 pairs, 4 x 20 pins")
    page.find("#clear").click()
    page.press("/", "nothing")
    check("no pin", page.find("#count").text, "No pair passes these filters")
    page.find("#clear").click()
    page.find("#source-filter").send_keys("U2*lo U3*sync")
    check("rows by stars", page.texts("#grid .name"), ["LO", "SENSE_LO", "SYNC"])
    page.find("#clear").click()
    check("cleared", page.find("#count").text, "540 pairs")
    check_critical(page)
    check_every_pair(page)
    for theme in ("light", "dark"):
        check(f"contrast, {theme}", page.run(LEAST_CONTRAST) >= 4.5, True)
        page.find("#theme").click()
    page.find("#theme").click()
    page.screenshot("dark")
    page.screenshot("dark-narrow", (420, 900))
    page.find("#theme").click()
    page.run("dispatchEvent(new Event('beforeprint'))")
    page.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": "print"})
    check("printed cells", page.run("return document.querySelectorAll('#printed td').length"), 540)
    check("no grid on paper", page.is_shown("#grid"), False)
    page.screenshot("print", (800, 1100))
    page.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": ""})


def check_critical(page):
    check("critical", page.texts("#list [role=option]")[-1], "K702#2 Relay SPDT 1 A, 12 V\n1")
    page.find("#list").click()
    page.press(Keys.HOME)
    check("first one", page.find("#title").text, "Without R1#3: 9 pairs lost")
    check("cells without the first", page.find("#count").text.split(",")[0], "9 of 540 pairs")
    page.press(Keys.END)
    check("without it", page.find("#title").text, "Without K702#2: 1 pair lost")
    check("cells without it", page.find("#count").text, "1 of 540 pairs, 1 x 1 pins")
    page.find(".pair").click()
    check("lost pair", page.find("#title").text, "U2#1.SENSE_LO \u2192 J1#3.SENSE-: 2 switches")
    check("critical for it", "K702#2" in page.texts("#facts p")[1].split(": ")[1].split(", "), True)
    page.press(Keys.ESCAPE)
    check("back to it", page.find("#title").text, "Without K702#2: 1 pair lost")
    page.press(Keys.ESCAPE)
    check("all again", page.find("#count").text, "540 pairs")


def check_coverage_compared(page):
    marked = "return Array.from(document.querySelectorAll('.cell.changed:not(.faded)'), (cell) => cell.textContent)"
    check("marks", page.run(marked)[:4], ["\u2715", "\u25b22", "\u25bc2", "+3"])
    check("listed", page.texts("#facts summary")[:4],
          ["\u2715 2 pairs lost", "+ 86 pairs gained", "\u25b2 1 pair longer", "\u25bc 1 pair shorter"])
    page.find("#facts summary").click()
    check("lost", page.texts("#facts details:first-of-type li"),
          ["U1#1.FORCE_HI to J1#3.VCC: 1 switch before, no route now",
           "U9#1.1 to J1#3.3 (not in both systems): 2 switches before, no route now"])
    page.screenshot("light")
    page.find("#kinds button:nth-of-type(3)").click()
    check("longer ones", [page.find("#count").text, page.run(marked)], ["1 of 540 pairs, 1 x 1 pins", ["\u25b22"]])
    page.find(".cell").click()
    check("before", page.texts("#facts p")[1], "longer, before: 1 switch")
    page.run("data.unknownRelays.push('K9#1'); showOverview();")
    check("unknown relays", page.run("return document.querySelector('#facts details:nth-of-type(5) li').textContent"),
          "K9#1")


def check_coverage_hostile(page):
    check_state_hostile(page)
    page.find(".cell").click()
    check("opened", len(page.drawn_refs()), page.data()["switches"][0][0])


MISPLACED = """
    const at = (element) => element.getBoundingClientRect();
    const one = (selector) => document.querySelector(`#grid ${selector}`);
    const cells = Array.from(document.querySelectorAll('.cell'));
    return cells.filter(({ dataset }, i) => {
        const cell = at(cells[i]);
        return cell.left !== at(one(`.column[data-dut='${dataset.dut}']`)).left ||
            cell.top !== at(one(`.name[data-source='${dataset.source}']`)).top;
    }).length;"""


def check_coverage_large(page):
    page.press_with_control(Keys.END)
    check("cells lie under their names", page.run(MISPLACED), 0)
    page.press(*[Keys.ARROW_LEFT] * 40, *[Keys.PAGE_UP] * 2)
    check("cells still lie there", page.run(MISPLACED), 0)
    rows = page.run("return Array.from(document.querySelectorAll('.line'), (row) => Number(row.ariaRowIndex))")
    check("rows in order", rows, sorted(rows))
    page.press_with_control(Keys.END)
    check("end", active_cell(page).get_attribute("aria-colindex"), page.find("#grid").get_attribute("aria-colcount"))
    check("names stay", page.run("""
        const [grid, name, column] = ['#grid', '.name.at', '.column.at'].map(
            (selector) => document.querySelector(selector).getBoundingClientRect());
        return [name.left - grid.left, column.top > grid.top, column.bottom < grid.top + 200];"""), [0, True, True])
    check("few cells", page.run("return document.querySelectorAll('.cell').length") < 2000, True)
    page.screenshot("light")


def main(folder):
    checks = {"demo": check_demo, "relays": check_relays, "drawn": check_drawn, "direct": check_direct, "fuse": check_fuse, "none": check_none,
              "large": check_large, "hostile": check_hostile,
              "coverage": check_coverage, "coverage-compared": check_coverage_compared,
              "coverage-large": check_coverage_large, "coverage-hostile": check_coverage_hostile,
              "state": check_state, "state-hostile": check_state_hostile, "state-large": check_state_large,
              "plan": check_plan, "plan-hostile": check_plan_hostile}
    with start_browser() as browser:
        for name, check_page in checks.items():
            page = Page(browser, folder, name)
            check_page(page)
            page.check_quiet()
    print(f"{len(checks)} pages, {len(failures)} failures")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
