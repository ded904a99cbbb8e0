#!/usr/bin/python3
"""A Modbus TCP controller that answers one request wrongly and all others well.

Usage: faulty_server.py [--port PORT] [--skip COUNT] FAULT

It prints `listening on 127.0.0.1:PORT` and serves several clients until it is ended. The first
COUNT requests that reach it are answered well, and after the wrong answer all that follow. A
register reads as its address, a bit as whether its address is odd; what is written is answered as
if it had been written. FAULT is one of the methods of `Faults`, or `exception-N` for an answer with
the exception N.
"""

import argparse
import itertools
import socket
import struct
import threading
import time

LATE_SECONDS = 1.6
TRICKLE_SECONDS = 0.08


def received(connection, count):
    """Exactly so many bytes. Raises ConnectionError where the client has gone."""
    data = b""
    while len(data) < count:
        more = connection.recv(count - len(data))
        if not more:
            raise ConnectionError("the client has gone")
        data += more
    return data


def bits_of(first, count):
    data = bytearray((count + 7) // 8)
    for i in range(count):
        data[i // 8] |= ((first + i) % 2) << (i % 8)
    return bytes(data)


def registers_of(first, count):
    return b"".join(struct.pack(">H", (first + i) % 0x10000) for i in range(count))


class Request:
    """A request, and the answers that can be given to it."""

    def __init__(self, connection):
        header = received(connection, 7)
        self.transaction, _, length, self.unit = struct.unpack(">HHHB", header)
        self.body = received(connection, length - 1)
        self.function = self.body[0]

    def framed(self, body, transaction=None):
        number = self.transaction if transaction is None else transaction
        return struct.pack(">HHHB", number, 0, len(body) + 1, self.unit) + body

    def good_body(self):
        first, count = struct.unpack(">HH", self.body[1:5])
        if self.function in (1, 2):
            data = bits_of(first, count)
        elif self.function in (3, 4):
            data = registers_of(first, count)
        else:
            return self.body[:5]
        return bytes([self.function, len(data)]) + data

    def good(self):
        return self.framed(self.good_body())


class Faults:
    """Each sends something to a request that is not its answer; the connection stays open unless
    the method ends it."""

    @staticmethod
    def late(connection, request):
        time.sleep(LATE_SECONDS)
        connection.sendall(request.good())

    @staticmethod
    def silent(connection, request):
        """No answer at all."""

    @staticmethod
    def closed(connection, request):
        connection.shutdown(socket.SHUT_RDWR)

    @staticmethod
    def reset(connection, request):
        connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        connection.close()

    @staticmethod
    def cut(connection, request):
        """Half an answer, and the end of the connection."""
        answer = request.good()
        connection.sendall(answer[: len(answer) // 2])
        connection.shutdown(socket.SHUT_RDWR)

    @staticmethod
    def stub(connection, request):
        """Half an answer, and silence."""
        answer = request.good()
        connection.sendall(answer[: len(answer) // 2])

    @staticmethod
    def trickle(connection, request):
        """A good answer, byte by byte: each in time, and the whole of it too late."""
        for byte in request.good():
            connection.sendall(bytes([byte]))
            time.sleep(TRICKLE_SECONDS)

    @staticmethod
    def short(connection, request):
        """A whole frame with fewer contents than were asked for."""
        connection.sendall(request.framed(bytes([request.function, 0])))

    @staticmethod
    def oversized(connection, request):
        """A frame of more bytes than the protocol allows."""
        connection.sendall(request.framed(bytes([request.function, 255]) + bytes(255)))

    @staticmethod
    def excessive(connection, request):
        """A legal frame with more contents than were asked for."""
        connection.sendall(request.framed(bytes([request.function, 200]) + bytes(200)))

    @staticmethod
    def followed(connection, request):
        """A good answer, and behind it another that nobody has asked for."""
        connection.sendall(request.good() + request.good())

    @staticmethod
    def transaction(connection, request):
        other = (request.transaction + 1) % 0x10000
        connection.sendall(request.framed(request.good_body(), transaction=other))

    @staticmethod
    def function(connection, request):
        """The answer to another function."""
        body = request.good_body()
        connection.sendall(request.framed(bytes([body[0] ^ 7]) + body[1:]))

    @staticmethod
    def garbage(connection, request):
        connection.sendall(b"HTTP/1.1 400 Bad Request\r\nConnection: close\r\n\r\n")


def fault_named(name):
    head, _, number = name.partition("-")
    if head == "exception" and number.isdigit() and int(number) < 256:
        return fault_with_exception(int(number))
    fault = getattr(Faults, name, None)
    if fault is None:
        raise argparse.ArgumentTypeError(f"there is no fault '{name}'")
    return fault


def fault_with_exception(number):
    def answer_with_exception(connection, request):
        connection.sendall(request.framed(bytes([request.function | 0x80, number])))

    return answer_with_exception


class Server:
    def __init__(self, port, fault, skipped):
        self.fault = fault
        self.skipped = skipped
        self.numbers = itertools.count()
        self.listener = socket.create_server(("127.0.0.1", port))

    def serve(self):
        print(f"listening on 127.0.0.1:{self.listener.getsockname()[1]}", flush=True)
        while True:
            connection, _ = self.listener.accept()
            threading.Thread(target=self.talk, args=(connection,), daemon=True).start()

    def talk(self, connection):
        try:
            with connection:
                while True:
                    self.answer(connection, Request(connection))
        except OSError:
            return  # whoever has gone is not missed

    def answer(self, connection, request):
        if next(self.numbers) == self.skipped:
            self.fault(connection, request)
        else:
            connection.sendall(request.good())


class Parser(argparse.ArgumentParser):
    """Says what is wrong with its arguments in one line."""

    def error(self, message):
        self.exit(2, f"{self.prog}: {message}\n")


def main():
    parser = Parser(description="A Modbus TCP controller with a fault")
    parser.add_argument("--port", type=int, default=0, help="0 for any free one")
    parser.add_argument("--skip", type=int, default=0, help="requests before the fault")
    parser.add_argument("fault", type=fault_named)
    arguments = parser.parse_args()
    Server(arguments.port, arguments.fault, arguments.skip).serve()


if __name__ == "__main__":
    main()
