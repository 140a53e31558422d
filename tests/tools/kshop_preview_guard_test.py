"""kshop preview: who may ask, and what can be asked for."""

import http.client
import json
import socket
import unittest

from preview_case import JSON, PreviewCase, parm_of

SET = json.dumps({"type": "korvan::image", "action": "set", "token": "filename", "value": "changed.tx"})


class Guard(PreviewCase):

    def setUp(self):
        super().setUp()
        self.page = self.preview()

    def refusal(self, status, method, path, body=None, headers=None, **options):
        """The sentence of an answer that must be a refusal."""
        got, sent, text = self.page.request(method, path, body, headers, **options)
        self.assertEqual(got, status, text)
        self.assertEqual(sent["content-type"], "application/json")
        return json.loads(text)["error"]

    def assert_unchanged(self):
        self.assertEqual(parm_of(self.page.node("korvan::image"), "filename")["value"], "")

    def test_an_interface_request_needs_the_token(self):
        wrong = [None, "", "0" * 32, self.page.token[:-1], self.page.token + "0", self.page.token.upper() + "x"]
        for token in wrong:
            headers = {} if token is None else {"X-Preview-Token": token}
            for path in "/api/state", "/api/node?type=korvan::image", "/api/records?since=0", "/api/nothing":
                with self.subTest(token=token, path=path):
                    self.assertEqual(self.refusal(403, "GET", path, headers=headers, token=False),
                                     "The token is missing or wrong; open the address that 'kshop preview' printed.")

    def test_an_edit_without_the_token_changes_nothing(self):
        self.refusal(403, "POST", "/api/edit", SET, JSON, token=False)
        self.refusal(403, "POST", "/api/edit?token=" + self.page.token, SET, JSON, token=False)
        self.assert_unchanged()

    def test_answers_by_its_two_names_only(self):
        port = self.page.port
        for host in "localhost:%d" % port, "127.0.0.1:%d" % port:
            with self.subTest(host):
                self.assertEqual(self.page.request("GET", "/api/nodes", headers={"Host": host})[0], 200)
        for host in "evil.example", "evil.example:%d" % port, "127.0.0.1", "localhost:1", "127.0.0.1:%d.evil" % port, "":
            for path in "/", "/api/nodes":
                with self.subTest(host=host, path=path):
                    self.assertEqual(self.refusal(403, "GET", path, headers={"Host": host}),
                                     "The preview answers at the address that it printed, and at no other.")

    def test_answers_no_other_page(self):
        own = "http://127.0.0.1:%d" % self.page.port
        self.assertEqual(self.page.request("GET", "/api/nodes", headers={"Origin": own})[0], 200)
        others = ["http://evil.example", "null", "https://127.0.0.1:%d" % self.page.port, own + "1",
                  "http://localhost:%d" % self.page.port]
        for origin in others:
            with self.subTest(origin):
                self.assertEqual(self.refusal(403, "POST", "/api/edit", SET, {"Origin": origin, **JSON}),
                                 "The preview answers its own page, and no other.")
                self.refusal(403, "GET", "/", headers={"Origin": origin})
        self.assert_unchanged()

    def test_serves_the_page_and_no_other_file(self):
        status, headers, body = self.page.request("GET", "/", token=False)
        self.assertEqual((status, headers["content-type"]), (200, "text/html; charset=utf-8"))
        self.assertEqual(self.page.request("GET", "/index.html", token=False)[2], body)
        paths = ["/../../etc/passwd", "/..%2f..%2fetc%2fpasswd", "/%2e%2e/%2e%2e/etc/passwd", "//etc/passwd",
                 "/index.html/", "/index.html/..", "/./index.html", "/index.html%00", "/share", "/api", "/..",
                 "/" + "a" * 8000]
        for path in paths:
            with self.subTest(path[:40]):
                self.assertIn(self.page.request("GET", path, token=False)[0], (400, 403, 404, 414))

    def test_every_answer_carries_the_headers_that_keep_it_to_itself(self):
        for path in "/", "/api/nodes", "/nothing":
            headers = self.page.request("GET", path)[1]
            with self.subTest(path):
                self.assertIn("default-src 'self'", headers["content-security-policy"])
                self.assertIn("frame-ancestors 'none'", headers["content-security-policy"])
                self.assertEqual(headers["x-content-type-options"], "nosniff")
                self.assertEqual(headers["cache-control"], "no-store")
                self.assertEqual(headers["referrer-policy"], "no-referrer")
                self.assertNotIn("access-control-allow-origin", headers)

    def test_an_edit_is_a_post_of_json(self):
        for wrong in {}, {"Content-Type": "text/plain"}, {"Content-Type": "application/jsonx"}, \
                {"Content-Type": "application/x-www-form-urlencoded"}:
            with self.subTest(wrong):
                self.assertEqual(self.refusal(415, "POST", "/api/edit", SET, wrong),
                                 "An edit's body is of the type application/json.")
        self.assert_unchanged()
        typed = {"Content-Type": "application/json; charset=utf-8"}
        self.assertEqual(self.page.request("POST", "/api/edit", SET, typed)[0], 200)

    def test_only_the_right_method_is_answered(self):
        self.assertEqual(self.refusal(405, "GET", "/api/edit"), "/api/edit is asked for with POST.")
        self.assertEqual(self.refusal(405, "POST", "/api/state", "{}", JSON), "/api/state is asked for with GET.")
        for method in "PUT", "DELETE", "PATCH", "OPTIONS":
            with self.subTest(method):
                self.refusal(405, method, "/api/edit", SET, JSON)
        self.refusal(405, "POST", "/", "{}", JSON)
        self.assert_unchanged()

    def test_a_body_that_is_no_edit_gets_its_sentence(self):
        nested = '{"a":' * 200000 + "1" + "}" * 200000
        rows = [("", "The body is no JSON that can be read."),
                ("{", "The body is no JSON that can be read."),
                ('{"a": NaN}', "The body is no JSON that can be read."),
                ('{"a": 1e999}', "The body is no JSON that can be read."),
                (b'{"a": "\xff"}', "The body is no JSON that can be read."),
                ("[]", "The body is to be a JSON object."),
                ("3", "The body is to be a JSON object."),
                ('{"a":' * 30 + "1" + "}" * 30, "The body is nested too deeply."),
                ("{}", 'The request has no "action".'),
                ('{"action": "set"}', 'The request has no "type".'),
                ('{"action": 3, "type": "korvan::image"}', '"action" is to be a text.')]
        for body, sentence in rows:
            with self.subTest(body[:40]):
                self.assertEqual(self.refusal(400, "POST", "/api/edit", body, JSON), sentence)
        self.assertEqual(self.refusal(413, "POST", "/api/edit", nested, JSON), "The request is longer than 1 MB.")
        self.assert_unchanged()

    def test_a_long_value_below_the_limit_is_taken(self):
        long = "x" * 1000000
        answer = self.page.edit("korvan::image", "set", token="filename", value=long)
        self.assertEqual(parm_of(answer, "filename")["value"], long)

    def test_the_wrong_questions_get_their_sentence(self):
        rows = [("/api/nothing", 404, 'There is no "/api/nothing".'),
                ("/api/node", 400, 'The request has no "type".'),
                ("/api/node?type=korvan::imge", 404,
                 'There is no shader type "korvan::imge"; did you mean korvan::image?'),
                ("/api/wait", 400, 'The request has no "generation".'),
                ("/api/wait?generation=x", 400, '"generation" is to be a whole number.'),
                ("/api/records?since=1.5", 400, '"since" is to be a whole number.'),
                ("/api/source?file=99", 404, "There is no metadata file 99."),
                ("/api/source?file=-1", 404, "There is no metadata file -1."),
                ("/api/source?file=../../etc/passwd", 400, '"file" is to be a whole number.'),
                ("/api/export?type=korvan::image&as=c", 400, '"as" is "python" or "mtd".')]
        for path, status, sentence in rows:
            with self.subTest(path):
                self.assertEqual(self.refusal(status, "GET", path), sentence)

    def test_goes_on_after_requests_that_are_none(self):
        for junk in b"\x00\xff\r\n\r\n", b"GET\r\n\r\n", b"GET / HTTP/9.9\r\n\r\n", b"POST /api/edit HTTP/1.1\r\nContent-Length: -5\r\n\r\n", \
                b"POST /api/edit HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n", b"A" * 100000:
            with self.subTest(junk[:30]):
                with socket.create_connection(("127.0.0.1", self.page.port)) as connection:
                    connection.settimeout(30)
                    try:
                        connection.sendall(junk)
                        connection.shutdown(socket.SHUT_WR)
                        while connection.recv(65536):
                            pass
                    except (ConnectionError, TimeoutError):
                        pass
                self.assertEqual(self.page.get("nodes"), [])

    def test_many_tabs_can_wait_and_it_still_answers(self):
        waiting = []
        for _ in range(50):
            connection = http.client.HTTPConnection("127.0.0.1", self.page.port, timeout=60)
            self.addCleanup(connection.close)
            connection.request("GET", "/api/wait?generation=1", headers={"X-Preview-Token": self.page.token})
            waiting.append(connection)
        self.assertEqual(self.page.get("nodes"), [])
        # The last ones are asked to come back soon.
        self.assertEqual(json.loads(waiting[-1].getresponse().read()), {"generation": 1, "reason": None})


if __name__ == "__main__":
    unittest.main()
