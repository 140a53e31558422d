"""kshop help-pages: a page for each type, where its help address points."""

import html.parser
import os
import urllib.parse
import unittest

from kshop_case import KshopCase

HOSTILE = '</td><script>alert("1")</script>&amp; \'x\'\x07'
PROBE = {"name": "zelk__probe", "kind": "shader", "output": "rgb",
         "parameters": [{"name": "gain", "type": "float", "default": 0.5},
                        {"name": "mode", "type": "enum", "enum": ["one", "two"], "default": 1},
                        {"name": "knots", "type": "array", "element": "float", "default": [0.5, 2]},
                        {"name": "path", "type": "string", "default": HOSTILE}],
         "metadata": [{"key": "houdini.label", "value": HOSTILE},
                      {"key": "houdini.category", "value": "Probes"},
                      {"key": "houdini.help_url", "value": "https://docs.example/a%20b/Probe%20One?x=1#top"},
                      {"key": "houdini.order", "value": "tabs gain mode path knots"},
                      {"key": "houdini.parm.folder.tabs", "value": "Main;1;More;1"},
                      {"parameter": "gain", "key": "min", "value": 0.0},
                      {"parameter": "gain", "key": "softmax", "value": 4.0},
                      {"parameter": "gain", "key": "desc", "value": "First line\nsecond " + HOSTILE},
                      {"parameter": "gain", "key": "houdini.disable_when", "value": "{ mode == one }"}]}


class Page(html.parser.HTMLParser):
    """Headings, rows and links of a page, as a reader finds them. Fails on elements that do not nest."""

    void = {"meta", "br"}

    def __init__(self, text):
        super().__init__()
        self.open, self.headings, self.rows, self.links, self.elements = [], [], [], [], set()
        self.feed(text)
        self.close()
        assert self.open == [], self.open

    def handle_starttag(self, tag, attrs):
        self.elements.add(tag)
        if tag == "br" and self.open[-1:] != []:
            self.handle_data("\n")
        if tag not in self.void:
            self.open.append(tag)
        if tag == "a":
            self.links.append(dict(attrs)["href"])
        if tag in ("h1", "h2", "h3"):
            self.headings.append("")
        if tag == "tr":
            self.rows.append((self.headings[-1], []))
        if tag == "td":
            self.rows[-1][1].append("")

    def handle_endtag(self, tag):
        assert self.open.pop() == tag, tag

    def handle_data(self, data):
        if any(h in self.open for h in ("h1", "h2", "h3")):
            self.headings[-1] += data
        if "td" in self.open:
            self.rows[-1][1][-1] += data

    def row(self, label):
        return next((heading, cells) for heading, cells in self.rows if cells and cells[0] == label)


class HelpPages(KshopCase):
    def pages(self, *nodes):
        directory = self.scratch / "pages"
        changes = {"KORVAN_CATALOGUE": self.catalogue(*nodes)} if nodes else {}
        self.output_of("help-pages", directory, **changes)
        return directory

    def page_at(self, directory, address):
        """What a web server gives for the last component of an address."""
        name = urllib.parse.unquote(urllib.parse.urlsplit(address).path.rsplit("/", 1)[-1])
        file = directory / name
        return Page((file / "index.html" if file.is_dir() else file).read_text(encoding="utf-8"))

    def test_stand_where_the_help_address_of_each_type_points(self):
        directory = self.pages()
        described = self.json_of("describe")["tables"]
        types = described["Vop"] + described["Shop"]
        self.assertGreater(len(types), 20)
        pages = [Page(f.read_text(encoding="utf-8")) for f in sorted(directory.rglob("*.html"))]
        titles = [page.headings[0] for page in pages]
        for operator in types:
            with self.subTest(operator["name"]):
                self.assertIn(operator["label"], titles)
                if operator["help_url"]:
                    page = self.page_at(directory, operator["help_url"])
                    shared = sum(o["help_url"] == operator["help_url"] for o in types) > 1
                    self.assertEqual(page.headings[0] == operator["label"], not shared)

    def test_are_all_reached_from_the_index_and_lead_back(self):
        directory = self.pages(PROBE)
        index = Page((directory / "index.html").read_text(encoding="utf-8"))
        reached = {(directory / urllib.parse.unquote(link)).resolve() for link in index.links}
        self.assertTrue(all(file.is_file() for file in reached))
        self.assertEqual(len(index.links), len(reached))
        described = self.json_of("describe", KORVAN_CATALOGUE=self.scratch / "catalogue.json")["tables"]
        self.assertEqual(len(reached), len(described["Vop"]) + len(described["Shop"]))
        for file in reached:
            back = Page(file.read_text(encoding="utf-8")).links[0]
            self.assertEqual((file.parent / back).resolve(), (directory / "index.html").resolve())
        shared = directory / "Shaders" / "index.html"
        for link in Page(shared.read_text(encoding="utf-8")).links:
            self.assertTrue((shared.parent / urllib.parse.unquote(link)).is_file(), link)

    def test_show_parameters_by_folder_with_all_that_an_artist_needs(self):
        page = self.page_at(self.pages(PROBE), PROBE["metadata"][2]["value"])
        heading, gain = page.row("Gain")
        self.assertEqual(heading, "Main")
        self.assertEqual(gain[1:6], ["gain", "float", "0.5", "at least 0, slider to 4", ""])
        self.assertTrue(gain[6].startswith("First line\nsecond "), gain)
        self.assertIn("Greyed out when { mode == one }", gain[6])
        self.assertEqual(page.row("Mode"), ("More", ["Mode", "mode", "text", '"two"', "", "one One\ntwo Two", ""]))
        heading, cells = next(row for row in page.rows if row[1] and row[1][0].startswith("each "))
        self.assertEqual((heading, cells[1]), ("Knots", "knots_#"))
        self.assertEqual(page.row("Path")[0], "Outside the tabs")

    def test_list_inputs_and_outputs(self):
        page = self.page_at(self.pages(PROBE), PROBE["metadata"][2]["value"])
        self.assertEqual([cells for heading, cells in page.rows if heading == "Inputs" and cells][0],
                         ["0", "Gain", "gain", "float"])
        self.assertEqual([cells[2] for heading, cells in page.rows if heading == "Outputs" and cells],
                         ["rgb", "r", "g", "b"])

    def test_show_hostile_texts_as_they_are_and_run_nothing(self):
        directory = self.pages(PROBE)
        for file in directory.rglob("*.html"):
            text = file.read_text(encoding="utf-8")
            page = Page(text)
            self.assertNotIn("script", page.elements)
            self.assertNotIn("\x07", text)
        page = self.page_at(directory, PROBE["metadata"][2]["value"])
        self.assertEqual(page.headings[0], HOSTILE.replace("\x07", "\\x07"))

    def test_need_no_other_file_and_are_readable_in_light_and_dark(self):
        text = (self.pages() / "index.html").read_text(encoding="utf-8")
        self.assertIn("color-scheme: light dark", text)
        self.assertIn("prefers-color-scheme: dark", text)
        self.assertEqual(Page(text).elements & {"link", "img", "script", "iframe"}, set())

    def test_stay_inside_the_directory_whatever_an_address_says(self):
        hostile = ["https://x/..", "https://x/%2e%2e", "https://x/a%2F..%2F..%2Fevil", "/etc/passwd/", "..", ".hidden",
                   "https://x/%00", "index.html", "https://x/" + "n" * 300, "https://host"]
        nodes = [dict(PROBE, name=f"zelk__h{i}", metadata=[{"key": "houdini.help_url", "value": url}])
                 for i, url in enumerate(hostile)]
        directory = self.pages(*nodes)
        self.assertEqual(sorted(p.name for p in self.scratch.iterdir()), ["catalogue.json", "pages"])
        for i in range(len(hostile)):
            self.assertTrue((directory / f"korvan--h{i}" / "index.html").is_file(), hostile[i])

    def test_take_an_address_that_ends_in_html_as_the_file(self):
        node = dict(PROBE, metadata=[{"key": "houdini.help_url", "value": "https://x/probe.html"}])
        page = Page((self.pages(node) / "probe.html").read_text(encoding="utf-8"))
        self.assertEqual(page.links[0], "index.html")

    def test_replace_those_of_an_earlier_run_and_leave_other_files_alone(self):
        directory = self.pages(PROBE)
        self.write("pages/notes.txt", "mine")
        self.pages(dict(PROBE, metadata=PROBE["metadata"] + [{"parameter": "mode", "key": "desc", "value": "Now helpful"}]))
        self.assertIn("Now helpful", (directory / "Probe One" / "index.html").read_text(encoding="utf-8"))
        self.assertEqual((directory / "notes.txt").read_text(), "mine")

    def test_write_nothing_when_somebody_elses_file_is_in_the_way(self):
        mine = self.write("pages/index.html", "<p>My own page</p>")
        self.assertEqual(self.failure_of("help-pages", self.scratch / "pages"),
                         f"kshop: {mine} was not made by 'kshop help-pages' and stays; nothing was written. Choose another "
                         "directory, or take that file away.\n")
        self.assertEqual([p.name for p in (self.scratch / "pages").iterdir()], ["index.html"])
        self.assertEqual(mine.read_text(), "<p>My own page</p>")

    def test_say_why_they_cannot_be_written(self):
        file = self.write("file", "")
        self.assertIn("cannot be written: Not a directory. Choose another directory",
                      self.failure_of("help-pages", file))
        self.assertIn("cannot be written", self.failure_of("help-pages", "/proc/nowhere"))
        self.assertEqual(os.path.getsize(file), 0)


if __name__ == "__main__":
    unittest.main()
