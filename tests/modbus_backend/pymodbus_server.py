#!/usr/bin/python3
"""A Modbus TCP controller whose protocol and number formats are those of pymodbus.

Usage: pymodbus_server.py [--port PORT]

It prints `listening on 127.0.0.1:PORT` and serves until it is ended. Its contents, as unit 255:
- holding and input registers: see `registers`, and 0 elsewhere up to 299; input register 0 is 4321
- coils 0 to 1999: on where the address is a multiple of 3
- discrete inputs 0 to 1999: on where the address is odd
Unit 7 has other contents: every register is 700, every bit is off.
Unit 8 keeps its contents where they cannot be reached: every access raises an exception.
"""

import argparse
import asyncio

from pymodbus.constants import Endian
from pymodbus.datastore import (
    ModbusSequentialDataBlock,
    ModbusServerContext,
    ModbusSlaveContext,
)
from pymodbus.payload import BinaryPayloadBuilder
from pymodbus.server.async_io import ModbusTcpServer

REGISTER_COUNT = 300
BIT_COUNT = 2000


def packed(word_order):
    """An empty list of values whose high byte comes first."""
    return BinaryPayloadBuilder(byteorder=Endian.Big, wordorder=word_order)


def numbers(word_order):
    """20 registers: i32, u32, flt, i64, u64, dbl, and 2 that are 0."""
    builder = packed(word_order)
    builder.add_32bit_int(-123456)
    builder.add_32bit_uint(0x12345678)
    builder.add_32bit_float(-1.5)
    builder.add_64bit_int(-9000000000)
    builder.add_64bit_uint(0xFEDCBA9876543210)
    builder.add_64bit_float(1234.0625)
    return builder.to_registers() + [0, 0]


def texts():
    """A text of 6 characters in 4 registers."""
    builder = packed(Endian.Big)
    builder.add_string("Modbus")
    return builder.to_registers() + [0]


def registers():
    """0: u16, 1: i16, 10 and 30: numbers, high word first and low word first, 50: a text,
    60: 4 u16, 100: 140 registers that count upwards from 1000."""
    builder = packed(Endian.Big)
    builder.add_16bit_uint(1234)
    builder.add_16bit_int(-2)
    contents = [0] * REGISTER_COUNT
    contents[0:2] = builder.to_registers()
    contents[10:30] = numbers(Endian.Big)
    contents[30:50] = numbers(Endian.Little)
    contents[50:54] = texts()
    contents[60:64] = [60, 61, 62, 63]
    contents[100:240] = range(1000, 1140)
    return contents


def block(contents):
    return ModbusSequentialDataBlock(0, contents)


def first_unit():
    inputs = registers()
    inputs[0] = 4321
    return ModbusSlaveContext(
        co=block([address % 3 == 0 for address in range(BIT_COUNT)]),
        di=block([address % 2 == 1 for address in range(BIT_COUNT)]),
        hr=block(registers()),
        ir=block(inputs),
        zero_mode=True,
    )


def other_unit():
    return ModbusSlaveContext(
        co=block([False] * BIT_COUNT),
        di=block([False] * BIT_COUNT),
        hr=block([700] * REGISTER_COUNT),
        ir=block([700] * REGISTER_COUNT),
        zero_mode=True,
    )


class BrokenBlock(ModbusSequentialDataBlock):
    """Has an address for everybody and contents for nobody."""

    def getValues(self, address, count=1):
        raise OSError("the store is broken")

    def setValues(self, address, values):
        raise OSError("the store is broken")


def broken_unit():
    broken = BrokenBlock(0, [0] * REGISTER_COUNT)
    return ModbusSlaveContext(co=broken, di=broken, hr=broken, ir=broken, zero_mode=True)


async def serve(port):
    slaves = {255: first_unit(), 7: other_unit(), 8: broken_unit()}
    units = ModbusServerContext(slaves=slaves, single=False)
    server = ModbusTcpServer(units, address=("127.0.0.1", port), allow_reuse_address=True)
    serving = asyncio.ensure_future(server.serve_forever())
    await server.serving
    port = server.server.sockets[0].getsockname()[1]
    print(f"listening on 127.0.0.1:{port}", flush=True)
    await serving


class Parser(argparse.ArgumentParser):
    """Says what is wrong with its arguments in one line."""

    def error(self, message):
        self.exit(2, f"{self.prog}: {message}\n")


def main():
    parser = Parser(description="A Modbus TCP controller for tests")
    parser.add_argument("--port", type=int, default=0, help="0 for any free one")
    asyncio.run(serve(parser.parse_args().port))


if __name__ == "__main__":
    main()
