"""Pictures of an X screen, read over a connection that stays open. Starting a program for each picture takes far longer."""
import socket
import struct

GET_GEOMETRY = 14
GET_IMAGE = 73
Z_PIXMAP = 2
ALL_PLANES = 0xFFFFFFFF
# The kinds of packets from the server; everything else is an event of 32 bytes.
ERROR, REPLY = 0, 1


class ScreenError(Exception):
    """The server refused a request, or its screen has another pixel format."""


class Pixels:
    """A connection to the X server of a display such as ":3"."""

    def __init__(self, display):
        self.before = self.converted = b""
        self.socket = socket.socket(socket.AF_UNIX)
        try:
            self.socket.connect("/tmp/.X11-unix/X" + display.removeprefix(":"))
            self.socket.sendall(struct.pack("<BxHHHHxx", ord("l"), 11, 0, 0, 0))
            self.root = self.read_setup()
        except BaseException:
            self.socket.close()
            raise

    def close(self):
        self.socket.close()

    def receive(self, size):
        data = bytearray(size)
        view = memoryview(data)
        while view:
            count = self.socket.recv_into(view)
            if count == 0:
                raise ScreenError("the X server closed the connection")
            view = view[count:]
        return data

    def read_setup(self):
        """Reads the server's description of itself and returns its first root window."""
        accepted, length = struct.unpack("<BxxxxxH", self.receive(8))
        setup = self.receive(4 * length)
        if accepted != 1:
            raise ScreenError(f"the X server refused the connection: {bytes(setup)!r}")
        vendor_length, = struct.unpack_from("<H", setup, 16)
        formats, order = setup[21], setup[22]
        at = 32 + (vendor_length + 3) // 4 * 4
        bits = {setup[at + 8 * index]: setup[at + 8 * index + 1] for index in range(formats)}
        root, = struct.unpack_from("<I", setup, at + 8 * formats)
        depth = setup[at + 8 * formats + 38]
        if order != 0 or depth != 24 or bits.get(24) != 32:
            raise ScreenError(f"a screen of depth {depth} with {bits.get(depth)} bits per pixel cannot be read")
        return root

    def ask(self, request):
        """Sends a request and returns its reply: 32 bytes, and what follows them."""
        self.socket.sendall(request)
        while True:
            packet = self.receive(32)
            if packet[0] == ERROR:
                raise ScreenError(f"the X server answers with error {packet[1]}")
            if packet[0] == REPLY:
                length, = struct.unpack_from("<I", packet, 4)
                return packet, self.receive(4 * length)

    def size(self):
        packet, _ = self.ask(struct.pack("<BxHI", GET_GEOMETRY, 2, self.root))
        return struct.unpack_from("<HH", packet, 16)

    def picture(self, width, height):
        """The pixels of the screen, row by row, three bytes each: red, green, blue."""
        _, data = self.ask(struct.pack("<BBHIhhHHI", GET_IMAGE, Z_PIXMAP, 5, self.root, 0, 0, width, height, ALL_PLANES))
        # While a test waits, most pictures are the same as the one before.
        if data != self.before:
            pixels = bytearray(3 * width * height)
            pixels[0::3], pixels[1::3], pixels[2::3] = data[2::4], data[1::4], data[0::4]
            self.before, self.converted = data, bytes(pixels)
        return self.converted
