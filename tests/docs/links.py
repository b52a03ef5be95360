"""Follows the links between the documents, and those into the repository."""
import re
import unittest

from documents import ROOT, Page, pages


class LinksTest(unittest.TestCase):
    def test_links(self):
        for page in [*pages(), Page(ROOT / "benchmarks/README.md"), Page(ROOT / "CHANGELOG.md")]:
            for link in page.links():
                if re.match(r"https?:", link):
                    continue
                file, _, anchor = link.partition("#")
                target = (page.folder / file).resolve() if file else ROOT / page.name
                with self.subTest(page=page.name, link=link):
                    self.assertTrue(target.exists())
                    if anchor:
                        self.assertIn(anchor, Page(target).anchors())

    def test_files_named_in_the_text_exist(self):
        for page in pages():
            for code in page.inline_code():
                path = code.split()[0].rstrip("/")
                if re.fullmatch(r"(scripts|docs|tests|cli|velk|velkini|examples|abi|cmake|fuzz|\.ci)/[a-z][\w./-]*", path):
                    with self.subTest(page=page.name, path=path):
                        self.assertTrue((ROOT / path).exists())

    def test_every_page_is_reached_from_the_readme(self):
        reached = {"README.md"}
        for _ in pages():
            for page in pages():
                if page.name in reached:
                    reached |= {str((page.folder / link.split("#")[0]).resolve().relative_to(ROOT))
                                for link in page.links() if ".md" in link and not link.startswith("http")}
        self.assertEqual([page.name for page in pages() if page.name not in reached], [])


if __name__ == "__main__":
    unittest.main()
