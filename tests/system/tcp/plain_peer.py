"""Sends messages to a receiver through Python's own sockets, and looks at what it prints.

    plain_peer.py COMMAND...

COMMAND runs the receiver until it has two messages with the filter "orders:", on a port that it
prints first. Prints "plain_peer: passed" when it printed those two alone.
"""

import socket
import subprocess
import sys
import time

PATIENCE = 30  # seconds


def connect(port):
    """A connection to the receiver, as soon as it listens."""
    end = time.monotonic() + PATIENCE
    while True:
        peer = socket.socket()
        peer.settimeout(PATIENCE)
        try:
            peer.connect(("127.0.0.1", port))
            return peer
        except ConnectionRefusedError:
            peer.close()
            if time.monotonic() > end:
                raise
            time.sleep(0.02)


def send(port, text, keep_open):
    """Sends one message, and waits until the receiver has closed the connection."""
    with connect(port) as peer:
        peer.sendall(text.encode())
        if not keep_open:
            peer.shutdown(socket.SHUT_WR)
        while peer.recv(100):
            pass


receiver = subprocess.Popen(sys.argv[1:], stdout=subprocess.PIPE, stdin=subprocess.DEVNULL)
try:
    port = int(receiver.stdout.readline().split()[-1].strip(b"."))
    send(port, "orders:one", keep_open=True)
    send(port, "chat:two", keep_open=False)
    send(port, "orders:three", keep_open=False)
    printed = receiver.communicate(timeout=PATIENCE)[0].decode().split("\r\n")
finally:
    receiver.kill()
wanted = ["message 1 from 127.0.0.1: one", "message 2 from 127.0.0.1: three", ""]
print("plain_peer: passed" if printed == wanted else f"plain_peer: {printed}")
