"""Gamepads on a screen: the real jukebox with devices that umockdev simulates, or the kernel through uinput.

The simulated devices need umockdev, whose library the test preloads into itself. Each device node is a pipe into which
the test writes events. Without umockdev or /dev/uinput the tests that need it are skipped.
"""
import ctypes
import fcntl
import os
import pathlib
import struct
import sys
import time
import unittest

import desk

# Types and codes of linux/input-event-codes.h.
EV_SYN, EV_KEY, EV_ABS = 0, 1, 3
BTN_TRIGGER, BTN_A, BTN_B, BTN_TL, BTN_TR, BTN_START = 0x120, 0x130, 0x131, 0x136, 0x137, 0x13b
ABS_X, ABS_Y, ABS_HAT0X, ABS_HAT0Y = 0, 1, 0x10, 0x11

PRELOADED = "libumockdev-preload.so.0"

CONFIGURATION = "Vantorix Jukebox - configuration"
KEY = "Vantorix Jukebox - key"
JUKEBOX = "Vantorix Jukebox"


def bits(numbers, size):
    """A bit field of `size` bytes, in hexadecimal."""
    return sum(1 << number for number in numbers).to_bytes(size, "little").hex().upper()


def answers(path, name, buttons, axes):
    """What the device answers to the system calls of its interface, in umockdev's format."""
    name_bytes = name.encode().ljust(255, b"\0").hex().upper()
    lines = [f"@DEV {path}", f"EVIOCGNAME(0) {len(name) + 1} {name_bytes}", "EVIOCGID 0 0300790006001001",
             "EVIOCGVERSION 0 01000100", f"EVIOCGPROP(0) 8 {bits([], 8)}",
             f"EVIOCGBIT(0) 8 {bits([EV_SYN, EV_KEY, EV_ABS], 8)}",
             f"EVIOCGBIT(1) 96 {bits(buttons, 96)}", f"EVIOCGBIT(3) 8 {bits(axes, 8)}"]
    lines += [f"EVIOCGBIT({kind}) 8 {bits([], 8)}" for kind in (2, 4, 5, 17, 18)]
    lines += [f"EVIOCGBIT(21) 16 {bits([], 16)}", f"EVIOCGKEY(0) 96 {bits([], 96)}", f"EVIOCGLED(0) 8 {bits([], 8)}",
              f"EVIOCGSW(0) 8 {bits([], 8)}"]
    lines += [f"EVIOCGABS({axis}) 0 {struct.pack('<6i', (low + high + 1) // 2, low, high, 0, 0, 0).hex().upper()}"
              for axis, (low, high) in axes.items()]
    return "\n".join(lines) + "\n"


class Machine:
    """A simulated machine for the programs that are started in its environment."""

    def __init__(self):
        self.library = ctypes.CDLL("libumockdev.so.0")
        for name in ("umockdev_testbed_new", "umockdev_testbed_get_root_dir"):
            getattr(self.library, name).restype = ctypes.c_void_p
        self.testbed = ctypes.c_void_p(self.library.umockdev_testbed_new())
        root = self.library.umockdev_testbed_get_root_dir(self.testbed)
        self.root = pathlib.Path(ctypes.string_at(root).decode())

    def call(self, name, *arguments):
        error = ctypes.c_void_p()
        encoded = [argument.encode() if isinstance(argument, str) else argument for argument in arguments]
        done = getattr(self.library, "umockdev_testbed_" + name)(self.testbed, *encoded, ctypes.byref(error))
        if not done:
            raise AssertionError(f"umockdev_testbed_{name} failed")

    def end(self):
        self.library.g_object_unref(self.testbed)


class Pad:
    """A simulated gamepad at /dev/input/event<number>."""

    def __init__(self, machine, number, name, buttons, axes, properties=("ID_INPUT", "ID_INPUT_JOYSTICK")):
        self.machine, self.path = machine, f"/dev/input/event{number}"
        self.place = f"/devices/input{number}/event{number}"
        machine.call("add_from_string", f"P: {self.place}\nN: input/event{number}\nE: DEVNAME={self.path}\n"
                                        f"E: SUBSYSTEM=input\n\n"
                                        f"P: /devices/input{number}\nE: SUBSYSTEM=input\nA: name={name}\\n\n")
        record = machine.root / f"event{number}.answers"
        record.write_text(answers(self.path, name, buttons, axes))
        machine.call("load_ioctl", self.path, str(record))
        self.node = machine.root / "dev" / "input" / f"event{number}"
        self.node.unlink()
        os.mkfifo(self.node)
        self.pipe = os.open(self.node, os.O_RDWR | os.O_NONBLOCK)
        # The simulation has already announced the device. The jukebox must not take it for a gamepad before it can open
        # the pipe: it would read the node that the pipe replaced.
        for key in properties:
            machine.library.umockdev_testbed_set_property(machine.testbed, ("/sys" + self.place).encode(), key.encode(), b"1")

    def tell(self, action):
        """Announces that the device was plugged in or removed."""
        self.machine.library.umockdev_testbed_uevent(self.machine.testbed, ("/sys" + self.place).encode(), action.encode())

    def send(self, *events):
        data = b"".join(struct.pack("<qqHHi", 0, 0, *event) for event in (*events, (EV_SYN, 0, 0)))
        return os.write(self.pipe, data)

    def push(self, button):
        self.send((EV_KEY, button, 1))
        time.sleep(0.05)
        self.send((EV_KEY, button, 0))
        time.sleep(0.05)

    def point(self, axis, value, rest=0):
        self.send((EV_ABS, axis, value))
        time.sleep(0.05)
        self.send((EV_ABS, axis, rest))
        time.sleep(0.05)


HAT = {ABS_HAT0X: (-1, 1), ABS_HAT0Y: (-1, 1)}
STICK = {ABS_X: (0, 255), ABS_Y: (0, 255)}


class Gamepads(desk.DeskTest):
    @classmethod
    def setUpClass(cls):
        if "umockdev" not in os.environ.get("LD_PRELOAD", ""):
            raise unittest.SkipTest("umockdev is not installed")

    def setUp(self):
        super().setUp()
        self.machine = Machine()
        self.addCleanup(self.machine.end)
        self.screen.environment["UMOCKDEV_DIR"] = str(self.machine.root)
        # The simulation ends programs that look for many devices in vain, as this sink does without a sound card.
        self.screen.environment["GST_PLUGIN_FEATURE_RANK"] = "alsasink:NONE"
        # Up, down, confirm and the configuration by a gamepad.
        text = (self.home / "config.ini").read_text(encoding="utf-8")
        for key, code in (("haut", 203), ("bas", 204), ("Valider", 195), ("Config", 207)):
            old = desk.sections_of(self.home / "config.ini")["Key"][key]
            text = text.replace(f"\n{key}={old}\n", f"\n{key}={code}\n", 1)
        (self.home / "config.ini").write_text(text, encoding="utf-8")

    def pad(self, number=5, name="Test Pad", **given):
        return Pad(self.machine, number, name, given.pop("buttons", range(BTN_A, BTN_A + 2)), given.pop("axes", HAT), **given)

    def see_pad(self, pad, name="Test Pad"):
        self.see_log(f" : Manette {name} ({pad.path})")

    def see_window(self, name):
        desk.wait_until(lambda: self.screen.focus() == name, f"the focus of {name!r}")

    def test_a_pad_browses_and_picks(self):
        pad = self.pad(buttons=(BTN_A, BTN_B, BTN_START))
        first = self.start_and_see()
        self.see_pad(pad)
        pad.point(ABS_HAT0Y, 1)
        second = self.see_change(first, "the cursor after a direction")
        pad.point(ABS_HAT0Y, -1)
        self.see_change(second, "the cursor after the other direction")
        pad.push(BTN_A)
        self.see_log(" : Some Artist - First Track.wav")
        self.signal()
        self.assert_ends(0)

    def test_pads_come_and_go(self):
        # Without any device at the start, the jukebox would look for gamepads in /dev/input itself.
        self.pad(4, "First Pad")
        self.start_and_see()
        pad = self.pad()
        pad.tell("add")
        self.see_pad(pad)
        # It is removed while a direction is held, which then must not repeat for ever.
        pad.send((EV_ABS, ABS_HAT0Y, 1))
        desk.wait_until(lambda: self.count_taken() > 3, "the held direction repeats")
        pad.tell("remove")
        self.see_log(f" : Manette {pad.path} débranchée")
        self.see_rest("the list without the pad")
        pad.tell("add")
        desk.wait_until(lambda: self.log().count(f" : Manette Test Pad ({pad.path})") == 2, "the pad again")

    def test_two_pads_act_as_one(self):
        pads = [self.pad(5), self.pad(6, "Other Pad")]
        self.start_and_see()
        for pad, name in zip(pads, ("Test Pad", "Other Pad")):
            self.see_pad(pad, name)
        for pad in pads:
            before = self.count_taken()
            pad.point(ABS_HAT0Y, 1)
            # A busy machine may see the direction long enough for it to repeat.
            desk.wait_until(lambda: self.count_taken() > before, "a direction of each pad")
            self.see_rest("the list")

    def test_an_encoder_without_udev(self):
        pad = self.pad(buttons=range(BTN_TRIGGER, BTN_TRIGGER + 12), axes=STICK, properties=())
        self.start_and_see()
        self.see_pad(pad)
        self.see_log(" : Manettes : sans udev, seules celles du démarrage sont lues")
        pad.push(BTN_TRIGGER)
        self.see_log(" : Some Artist - First Track.wav")

    def test_other_devices_are_left_alone(self):
        self.pad(4, properties=("ID_INPUT", "ID_INPUT_JOYSTICK", "ID_INPUT_ACCELEROMETER"))
        self.pad(6, properties=("ID_INPUT", "ID_INPUT_JOYSTICK", "ID_INPUT_KEYBOARD"))
        self.pad(7, properties=("ID_INPUT", "ID_INPUT_MOUSE"))
        pad = self.pad()
        self.start_and_see()
        self.see_pad(pad)
        self.assertEqual([line for line in self.log() if "Manette" in line], [f" : Manette Test Pad ({pad.path})"])

    def test_a_pad_that_cannot_be_opened_is_one_line(self):
        pad = self.pad()
        pad.node.unlink()
        os.symlink("itself", pad.node.with_name("itself"))
        os.symlink("itself", pad.node)
        self.start_and_see()
        desk.wait_until(lambda: any(line.startswith(f" : Manette Test Pad ({pad.path}) : ") for line in self.log()),
                        "the line about the pad")
        pad.tell("change")
        time.sleep(0.5)
        self.assertEqual(sum("Manette" in line for line in self.log()), 1)

    def test_switched_off_no_pad_is_read(self):
        desk.edit(self.home / "config.ini", "Gamepads=true", "Gamepads=false")
        self.pad()
        self.start_and_see()
        time.sleep(1)
        self.assertFalse([line for line in self.log() if "Manette" in line])

    def test_a_button_is_bound_and_the_configuration_works_by_pad(self):
        pad = self.pad(buttons=(BTN_A, BTN_B, BTN_START, BTN_TL, BTN_TR))
        self.start_and_see()
        self.see_pad(pad)
        pad.push(BTN_START)
        self.see_window(CONFIGURATION)
        # Down to the page of keys, then to its first button by the right shoulder.
        for _ in range(4):
            pad.point(ABS_HAT0Y, 1)
        pad.push(BTN_TR)
        pad.push(BTN_A)
        self.see_window(KEY)
        pad.push(BTN_B)
        self.see_log("196")
        self.see_window(CONFIGURATION)
        # Back to the list of pages, where "Menu" is OK.
        pad.push(BTN_TL)
        pad.push(BTN_START)
        self.see_window(JUKEBOX)
        self.assertEqual(desk.sections_of(self.home / "config.ini")["Key"]["haut"], "196")

    def test_a_flood_leaves_time_for_keys(self):
        pad = self.pad(axes={**HAT, **STICK})
        first = self.start_and_see()
        self.see_pad(pad)
        end = time.monotonic() + 5
        sent = 0
        answered = None
        while time.monotonic() < end:
            for value in (0, 255) * 8:
                try:
                    pad.send((EV_ABS, ABS_X, value))
                    sent += 1
                except BlockingIOError:
                    break
            time.sleep(0.002)
            if answered is None and time.monotonic() > end - 3:
                self.screen.press("Right")
                answered = time.monotonic()
        self.see_change(first, "a key during the flood")
        self.assertGreater(sent, 5000, "the flood came through")


class Uinput(desk.DeskTest):
    """A device of the kernel, where it lets us make one."""

    UI_SET_EVBIT, UI_SET_KEYBIT, UI_DEV_CREATE, UI_DEV_DESTROY, UI_DEV_SETUP = (
        0x40045564, 0x40045565, 0x5501, 0x5502, 0x405c5503)

    def test_a_button_of_a_kernel_device_confirms(self):
        try:
            device = os.open("/dev/uinput", os.O_WRONLY | os.O_NONBLOCK)
        except OSError as error:
            self.skipTest(f"/dev/uinput: {error.strerror}")
        self.addCleanup(os.close, device)
        fcntl.ioctl(device, self.UI_SET_EVBIT, EV_KEY)
        for button in range(BTN_TRIGGER, BTN_TRIGGER + 12):
            fcntl.ioctl(device, self.UI_SET_KEYBIT, button)
        fcntl.ioctl(device, self.UI_DEV_SETUP, struct.pack("<HHHH80sI", 3, 0x1234, 0x5678, 1, b"Vantorix test", 0))
        fcntl.ioctl(device, self.UI_DEV_CREATE)
        self.addCleanup(fcntl.ioctl, device, self.UI_DEV_DESTROY)
        desk.edit(self.home / "config.ini", "\nValider=13\n", "\nValider=195\n")
        self.start_and_see()
        desk.wait_until(lambda: any(" Vantorix test " in line for line in self.log()), "the device")
        for value in (1, 0):
            os.write(device, struct.pack("<qqHHiqqHHi", 0, 0, EV_KEY, BTN_TRIGGER, value, 0, 0, EV_SYN, 0, 0))
        self.see_log(" : Some Artist - First Track.wav")


def preload():
    """Starts this program again with the simulation's library, if it is installed."""
    if "umockdev" in os.environ.get("LD_PRELOAD", ""):
        return
    try:
        ctypes.CDLL(PRELOADED)
    except OSError:
        return
    os.environ["LD_PRELOAD"] = " ".join(filter(None, (PRELOADED, os.environ.get("LD_PRELOAD"))))
    os.execv(sys.executable, [sys.executable, *sys.orig_argv[1:]])


if __name__ == "__main__":
    preload()
    unittest.main()
