"""Base of the tests that send change records to kshop, or have it send some."""

import ctypes
import ctypes.util
import json
import struct
import subprocess
import threading

from kshop_case import KSHOP, KshopCase

LONGEST_WAIT = 60  # seconds until a program that hangs is ended; nothing waits for that when all is well


MATRIX = [float(i) / 4 for i in range(16)]

# One value of every type as `listen --json` shows it, which is also what a record's text holds.
EVERY_TYPE = {
    "array of booleans": (13, {"element_type": 3, "values": [True, False]}),
    "array of bytes": (13, {"element_type": 0, "values": [0, 255]}),
    "array of colours": (13, {"element_type": 5, "values": [[0.0, 0.5, 1.0], [-1.0, 2.0, 3.0]]}),
    "array of enum": (13, {"element_type": 15, "values": [2, -1]}),
    "array of floats": (13, {"element_type": 4, "values": [0.25, -0.0]}),
    "array of ints": (13, {"element_type": 1, "values": [-2147483648, 2147483647]}),
    "array of matrices": (13, {"element_type": 14, "values": [MATRIX]}),
    "array of point2": (13, {"element_type": 9, "values": [[1.0, 2.0]]}),
    "array of points": (13, {"element_type": 8, "values": [[1.0, 2.0, 3.0]]}),
    "array of rgba": (13, {"element_type": 6, "values": [[1.0, 2.0, 3.0, 4.0]]}),
    "array of texts": (13, {"element_type": 10, "values": ["", "grün \"x\"\n"]}),
    "array of uints": (13, {"element_type": 2, "values": [4294967295]}),
    "array of vectors": (13, {"element_type": 7, "values": []}),
    "array with motion keys": (13, {"element_type": 4, "key_count": 2, "values": [1.0, 2.0]}),
    "array, unhandled": (13, "<unhandled>"),
    "boolean": (3, True),
    "byte": (0, 255),
    "enum": (15, "linear"),
    "float": (4, 1.401298464324817e-45),
    "int": (1, -2147483648),
    "matrix": (14, MATRIX),
    "newer type": (200, "<unhandled>"),
    "node": (12, "/obj/cam1"),
    "point": (8, [1.0, 2.0, 3.0]),
    "point2": (9, [1.0, 2.0]),
    "pointer": (11, "<unhandled>"),
    "rgb": (5, [0.5, -0.0, 3.4028234663852886e+38]),
    "rgba": (6, [1.0, 2.0, 3.0, 4.0]),
    "string": (10, "zero \0, newline \n, quote \", snowman \u2603"),
    "uint": (2, -1),
    "vector": (7, [1.0, 2.0, 3.0]),
}


def packed(value):
    """MessagePack, as far as records need it: bytes are texts as they are, floats have 32 bits."""
    if isinstance(value, bool):
        return b"\xc3" if value else b"\xc2"
    if isinstance(value, int):
        return struct.pack(">Bq", 0xD3, value)
    if isinstance(value, float):
        return struct.pack(">Bf", 0xCA, value)
    if isinstance(value, str):
        value = value.encode()
    if isinstance(value, bytes):
        return struct.pack(">BI", 0xDB, len(value)) + value
    if isinstance(value, dict):
        return struct.pack(">BI", 0xDF, len(value)) + b"".join(packed(k) + packed(v) for k, v in value.items())
    return struct.pack(">BI", 0xDD, len(value)) + b"".join(map(packed, value))


def record(parms=None, path="/shop/net/a", entry="noise"):
    """A record; parameters are (type code, value)."""
    values = {name: {"type": code, "value": value} for name, (code, value) in (parms or {}).items()}
    return {"node_path": path, "entry_name": entry, "parms": values}


def numbered(count):
    """Records that differ in one whole number, from 0."""
    return [record({"i": (1, i)}) for i in range(count)]


def lines_of(records):
    return "".join(json.dumps(r) + "\n" for r in records)


def send_texts(endpoint, *texts):
    """Sends bytes to whoever listens at the endpoint, and returns when they are on their way to it."""
    zmq = ctypes.CDLL(ctypes.util.find_library("zmq") or "libzmq.so.5")
    for function in (zmq.zmq_ctx_new, zmq.zmq_socket):
        function.restype = ctypes.c_void_p
    dealer = 5
    context = ctypes.c_void_p(zmq.zmq_ctx_new())
    socket = ctypes.c_void_p(zmq.zmq_socket(context, dealer))
    try:
        if zmq.zmq_connect(socket, endpoint.encode()) != 0:
            raise RuntimeError(f"cannot connect to {endpoint}")
        for text in texts:
            if zmq.zmq_send(socket, text, ctypes.c_size_t(len(text)), 0) != len(text):
                raise RuntimeError("cannot send")
    finally:
        zmq.zmq_close(socket)  # which lets what was sent go first
        zmq.zmq_ctx_term(context)


class Running:
    """A kshop that runs beside the test. It is ended with the test, or when it hangs."""

    def __init__(self, case, *arguments, **changes):
        self.process = subprocess.Popen([str(KSHOP), *map(str, arguments)], stdin=subprocess.DEVNULL,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, encoding="utf-8",
                                        env=case.environment(**changes))
        self.watchdog = threading.Timer(LONGEST_WAIT, self.process.kill)
        self.watchdog.start()
        case.addCleanup(self.end)

    def end(self):
        self.watchdog.cancel()
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()
        self.process.stderr.close()

    def line(self):
        return self.process.stdout.readline()

    def message(self):
        return self.process.stderr.readline()

    def signal(self, number):
        self.process.send_signal(number)

    def result(self):
        """What is left of standard output and standard error, and the status, when it has ended by itself."""
        output, messages = self.process.communicate()
        return output, messages, self.process.returncode


class RecordCase(KshopCase):
    def setUp(self):
        super().setUp()
        self.endpoint = f"ipc://{self.scratch}/render"

    def environment(self, **changes):
        return super().environment(**{"ZELK_IPR_ENDPOINT": self.endpoint, **changes})

    def listening(self, *arguments, **changes):
        """A `kshop listen` that is ready to receive; `where` is its endpoint."""
        render = Running(self, "listen", *arguments, **changes)
        begin, _, render.where = render.message().rstrip("\n").partition(" at ")
        self.assertEqual(begin, "kshop: listening")
        return render

    def heard_by(self, render):
        """The records that a `listen --json --count N` printed."""
        output, messages, status = render.result()
        self.assertEqual((messages, status), ("", 0))
        return [json.loads(line) for line in output.splitlines()]
