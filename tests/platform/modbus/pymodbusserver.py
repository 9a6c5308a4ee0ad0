# SPDX-License-Identifier: Apache-2.0
"""A Modbus/TCP server that is not ours: coils 0 to 15 are ON, OFF, ..., discrete inputs the numbers given.

usage: pymodbusserver.py INPUT...        prints the port that it listens on
"""
import asyncio
import sys

from pymodbus.datastore import ModbusSequentialDataBlock, ModbusServerContext, ModbusSlaveContext
from pymodbus.server.async_io import ModbusTcpServer


async def serve(inputs):
    unit = ModbusSlaveContext(
        di=ModbusSequentialDataBlock(0, inputs),
        co=ModbusSequentialDataBlock(0, [True, False] * 8),
        zero_mode=True)
    server = ModbusTcpServer(ModbusServerContext(slaves={1: unit}, single=False), address=("127.0.0.1", 0))
    task = asyncio.ensure_future(server.serve_forever())
    await server.serving
    print(server.server.sockets[0].getsockname()[1], flush=True)
    await task


asyncio.run(serve([argument == "1" for argument in sys.argv[1:]]))
