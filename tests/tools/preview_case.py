"""Base of the tests that talk to a running `kshop preview`, as its page does."""

import http.client
import json
import os
import re
import signal
import subprocess
import time
import urllib.parse

from kshop_case import KSHOP, KshopCase

ADDRESS = re.compile(r"^http://127\.0\.0\.1:(\d+)/\?token=([0-9a-f]{32})(?:#(.*))?\n$")

# The hidden part of what a request may bring.
JSON = {"Content-Type": "application/json"}


class Preview:
    """A running preview; it ends with close()."""

    def __init__(self, arguments, environment, cwd=None):
        self.process = subprocess.Popen([str(KSHOP), "preview", *arguments], stdin=subprocess.DEVNULL,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, env=environment,
                                        cwd=cwd)
        self.address = self.process.stdout.readline()
        match = ADDRESS.match(self.address)
        if not match:
            self.close()
            raise AssertionError("no address: %r %r" % (self.address, self.complaints))
        self.port, self.token, self.fragment = int(match[1]), match[2], match[3]

    def request(self, method, path, body=None, headers=None, token=True, timeout=60):
        """(status, headers, bytes) of one request."""
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=timeout)
        try:
            sent = dict(headers or {})
            if token:
                sent.setdefault("X-Preview-Token", self.token)
            connection.request(method, path, body, sent)
            answer = connection.getresponse()
            return answer.status, {k.lower(): v for k, v in answer.getheaders()}, answer.read()
        finally:
            connection.close()

    def get(self, path, expect=200, **params):
        query = "?" + urllib.parse.urlencode(params) if params else ""
        status, _, body = self.request("GET", "/api/" + path + query)
        answer = json.loads(body)
        assert status == expect, (status, answer)
        return answer

    def post(self, body, expect=200):
        text = body if isinstance(body, (str, bytes)) else json.dumps(body)
        status, _, answer = self.request("POST", "/api/edit", text, JSON)
        answer = json.loads(answer)
        assert status == expect, (status, answer)
        return answer

    def edit(self, type, action, expect=200, **members):
        return self.post({"type": type, "action": action, **members}, expect)

    def node(self, type):
        return self.get("node", type=type)

    def workers(self):
        """Process numbers of the preview's children."""
        children = "/proc/%d/task" % self.process.pid
        found = []
        for task in os.listdir(children):
            with open("%s/%s/children" % (children, task), encoding="ascii") as file:
                found += map(int, file.read().split())
        return found

    def wait_for(self, known, seconds=20):
        """The answer of the first wait that tells of another generation."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            answer = self.get("wait", generation=known)
            if answer["generation"] != known:
                return answer
        raise AssertionError("nothing has changed")

    def close(self, sent=signal.SIGTERM):
        """Ends it; its exit status. What it wrote is in `complaints`."""
        if self.process.poll() is None:
            self.process.send_signal(sent)
        try:
            _, self.complaints = self.process.communicate(timeout=30)
        except subprocess.TimeoutExpired:
            self.process.kill()
            _, self.complaints = self.process.communicate()
            raise
        return self.process.returncode


def parms_of(pane):
    """All PARM objects of a pane by token, those in folders, lists and ramps too."""
    found = {}
    for parm in pane:
        found[parm["token"]] = parm
        for inside in parm.get("tabs", []) + parm.get("instances", []):
            found.update(parms_of(inside["parms"]))
    return found


def parm_of(answer, token):
    """One parameter of a node, or of an edit's answer."""
    return parms_of(answer.get("node", answer)["parms"])[token]


class PreviewCase(KshopCase):
    def preview(self, *arguments, cwd=None, **changes):
        preview = Preview(["--port", "0", *map(str, arguments)], self.environment(**changes), cwd)
        self.addCleanup(preview.close)
        return preview

    def shader(self, parameters, metadata=(), name="zelk__try", output="rgb"):
        """A catalogue file with one shader; metadata rows are (key, value) or (parameter, key, value)."""
        rows = [dict(zip(("parameter", "key", "value") if len(row) == 3 else ("key", "value"), row)) for row in metadata]
        return self.catalogue({"name": name, "kind": "shader", "output": output, "parameters": parameters,
                               "metadata": rows})

    def preview_of(self, parameters, metadata=(), **changes):
        return self.preview(KORVAN_CATALOGUE=self.shader(parameters, metadata), **changes)
