#!/usr/bin/python3
"""Stands between a client and a Modbus TCP controller and spoils what they say to each other.

Usage: pymodbus_proxy.py --to PORT [--port PORT] [--skip COUNT] FAULT

It prints `listening on 127.0.0.1:PORT` and passes on requests and answers of several clients until
it is ended. The first COUNT exchanges that reach it pass as they are, and all that follow the one
that is spoilt. FAULT is one of the methods of `Faults`, or one for many exchanges:

  cut-everywhere    every second exchange is cut, the first one passes: the N-th cut lets N bytes of
                    request and answer pass, counted from 0 on, and then ends both connections
  reset-everywhere  the same, and the client's connection is reset
"""

import argparse
import itertools
import os
import socket
import struct
import threading
import time

LATE_SECONDS = 1.6
SLOW_SECONDS = 0.08
HEAD_SIZE = 6
EXCEPTION = 0x80
UNKNOWN_FUNCTION = 0x41


def received(connection, count):
    """Exactly so many bytes. Raises ConnectionError where the other side has gone."""
    data = b""
    while len(data) < count:
        more = connection.recv(count - len(data))
        if not more:
            raise ConnectionError("the other side has gone")
        data += more
    return data


def frame_from(connection):
    head = received(connection, HEAD_SIZE)
    return head + received(connection, struct.unpack(">H", head[4:])[0])


def with_length(frame, length):
    return frame[:4] + struct.pack(">H", length) + frame[HEAD_SIZE:]


def framed_again(frame):
    """With the length that it has come to have."""
    return with_length(frame, len(frame) - HEAD_SIZE)


def changed_at(place, frame, number):
    return frame[:place] + bytes([number]) + frame[place + 1:]


def byte_by_byte(connection, data, pause):
    for byte in data:
        connection.sendall(bytes([byte]))
        time.sleep(pause)


class Vanished(Exception):
    """This proxy is to end."""


class Exchange:
    """One request, and the way to its answer."""

    def __init__(self, client, controller):
        self.client = client
        self.controller = controller
        self.request = frame_from(client)

    def answer_to(self, request):
        self.controller.sendall(request)
        return frame_from(self.controller)

    def answer(self):
        return self.answer_to(self.request)

    def reply(self, data):
        self.client.sendall(data)

    def pass_on(self):
        self.reply(self.answer())

    def cut(self, count):
        """Lets so many bytes pass, those of the request first, and ends both connections."""
        if count < len(self.request):
            self.controller.sendall(self.request[:count])
        else:
            self.reply(self.answer()[: count - len(self.request)])
        raise ConnectionError("cut")


class Faults:
    """Each spoils one exchange; the connections stay open unless the method ends them."""

    @staticmethod
    def late(exchange):
        answer = exchange.answer()
        time.sleep(LATE_SECONDS)
        exchange.reply(answer)

    @staticmethod
    def none(exchange):
        """For a line that works."""
        exchange.pass_on()

    @staticmethod
    def cut(exchange):
        """Half an answer, and the end of the connection."""
        exchange.cut(len(exchange.request) + HEAD_SIZE + 1)

    @staticmethod
    def stub(exchange):
        """Half an answer, and silence."""
        exchange.reply(exchange.answer()[: HEAD_SIZE + 1])

    @staticmethod
    def vanish(exchange):
        """Half an answer, and nobody listens here any more."""
        exchange.reply(exchange.answer()[: HEAD_SIZE + 1])
        raise Vanished

    @staticmethod
    def short(exchange):
        """A whole frame with one register too few."""
        answer = framed_again(exchange.answer()[:-2])
        exchange.reply(changed_at(8, answer, answer[8] - 2))

    @staticmethod
    def oversized(exchange):
        """A frame of more bytes than the protocol allows."""
        answer = exchange.answer()
        exchange.reply(framed_again(changed_at(8, answer[:9], 255) + bytes(255)))

    @staticmethod
    def count_longer(exchange):
        """The byte that counts the contents says more than there are."""
        answer = exchange.answer()
        exchange.reply(changed_at(8, answer, answer[8] + 2))

    @staticmethod
    def count_shorter(exchange):
        """It says less, and there are bytes behind the answer."""
        answer = exchange.answer()
        exchange.reply(changed_at(8, answer, answer[8] - 2))

    @staticmethod
    def length_zero(exchange):
        exchange.reply(with_length(exchange.answer(), 0))

    @staticmethod
    def length_swapped(exchange):
        """With the bytes of the length in the wrong order."""
        answer = exchange.answer()
        exchange.reply(answer[:4] + answer[5:3:-1] + answer[HEAD_SIZE:])

    @staticmethod
    def length_longer(exchange):
        answer = exchange.answer()
        exchange.reply(with_length(answer, len(answer) - HEAD_SIZE + 2))

    @staticmethod
    def length_shorter(exchange):
        answer = exchange.answer()
        exchange.reply(with_length(answer, len(answer) - HEAD_SIZE - 2))

    @staticmethod
    def transaction(exchange):
        """The bytes of the number of the exchange in the wrong order."""
        answer = exchange.answer()
        exchange.reply(answer[1::-1] + answer[2:])

    @staticmethod
    def split(exchange):
        """Byte by byte, and in time."""
        byte_by_byte(exchange.client, exchange.answer(), 0.001)

    @staticmethod
    def slow(exchange):
        """Byte by byte: each in time, and the whole of it too late."""
        byte_by_byte(exchange.client, exchange.answer(), SLOW_SECONDS)

    @staticmethod
    def doubled(exchange):
        """The answer twice."""
        answer = exchange.answer()
        exchange.reply(answer + answer)

    @staticmethod
    def unknown_function(exchange):
        """The controller hears a function that it does not know; the client sees its own."""
        answer = exchange.answer_to(changed_at(7, exchange.request, UNKNOWN_FUNCTION))
        if answer[7] != UNKNOWN_FUNCTION | EXCEPTION:
            raise ConnectionError("the controller knows the function")
        exchange.reply(changed_at(7, answer, exchange.request[7] | EXCEPTION))

    @staticmethod
    def no_count(exchange):
        """The controller is asked for no registers at all, or given none."""
        exchange.reply(exchange.answer_to(exchange.request[:10] + bytes(2) + exchange.request[12:]))


def fault_named(name):
    fault = getattr(Faults, name.replace("-", "_"), None)
    if name.startswith("_") or fault is None:
        raise argparse.ArgumentTypeError(f"no such fault: {name}")
    return fault


def spoiling_one(skipped, name):
    """Passes all exchanges but one."""
    fault, numbers = fault_named(name), itertools.count()

    def handle(exchange):
        if next(numbers) == skipped:
            fault(exchange)
        else:
            exchange.pass_on()
    return handle


def cutting_everywhere(resets):
    """Cuts every second exchange, each time one byte later."""
    numbers = itertools.count()

    def handle(exchange):
        cuts, is_cut = divmod(next(numbers), 2)
        if not is_cut:
            exchange.pass_on()
            return
        if resets:
            exchange.client.setsockopt(
                socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        exchange.cut(cuts)
    return handle


class Proxy:
    def __init__(self, port, controller_port, handle):
        self.controller = ("127.0.0.1", controller_port)
        self.handle = handle
        self.listener = socket.create_server(("127.0.0.1", port))

    def serve(self):
        print(f"listening on 127.0.0.1:{self.listener.getsockname()[1]}", flush=True)
        while True:
            try:
                client, _ = self.listener.accept()
            except OSError:
                return  # it has vanished
            threading.Thread(target=self.talk, args=(client,), daemon=True).start()

    def talk(self, client):
        try:
            with client, socket.create_connection(self.controller) as controller:
                client.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
                self.talk_between(client, controller)
        except OSError:
            return  # whoever has gone is not missed

    def talk_between(self, client, controller):
        while True:
            try:
                self.handle(Exchange(client, controller))
            except Vanished:
                # When the client learns that its connection has ended, there is no other to be had.
                self.listener.shutdown(socket.SHUT_RDWR)
                os._exit(0)


class Parser(argparse.ArgumentParser):
    """Says what is wrong with its arguments in one line."""

    def error(self, message):
        self.exit(2, f"{self.prog}: {message}\n")


def main():
    parser = Parser(description="A faulty line to a Modbus TCP controller")
    parser.add_argument("--to", type=int, required=True, help="port of the controller")
    parser.add_argument("--port", type=int, default=0, help="0 for any free one")
    parser.add_argument("--skip", type=int, default=0, help="exchanges before the fault")
    parser.add_argument("fault")
    arguments = parser.parse_args()
    if arguments.fault in ("cut-everywhere", "reset-everywhere"):
        handle = cutting_everywhere(arguments.fault == "reset-everywhere")
    else:
        try:
            handle = spoiling_one(arguments.skip, arguments.fault)
        except argparse.ArgumentTypeError as problem:
            parser.error(str(problem))
    Proxy(arguments.port, arguments.to, handle).serve()


if __name__ == "__main__":
    main()
