"""A drive with something of everything in it, for pictures of the local service and for tests that look at it."""

import json
import math
import urllib.error
import urllib.request

from demo_backup import back_up, png


def landscape(number, width=160, height=120):
    """Hills under a sky at some time of day, as a PNG file."""
    dusk = number / 11
    rows = bytearray()
    for y in range(height):
        rows.append(0)
        for x in range(width):
            far = height * (0.55 + 0.10 * math.sin(x / 23 + number))
            near = height * (0.75 + 0.12 * math.sin(x / 37 + 2 * number))
            sun = (x - width * (0.2 + 0.05 * number)) ** 2 + (y - height * 0.3) ** 2 < 120
            if y > near:
                colour = (40 + 30 * dusk, 90 - 40 * dusk, 50)
            elif y > far:
                colour = (90 + 50 * dusk, 130 - 50 * dusk, 110)
            elif sun:
                colour = (255, 240 - 80 * dusk, 170)
            else:
                colour = (120 + 120 * dusk, 180 - 40 * dusk, 235 - 110 * dusk * y / height)
            rows.extend(int(part) for part in colour)
    return png(width, height, bytes(rows))


def plan_fault(address, **fault):
    with urllib.request.urlopen(address + "/_dev/faults", json.dumps(fault).encode(), timeout=30):
        pass


def ask_for_nothing(address):
    try:
        urllib.request.urlopen(address + "/quillbox/ose/v1/nothing", timeout=30).close()
    except urllib.error.HTTPError as refusal:
        refusal.close()


def fill(quillbox, address, folder):
    """Uploads pictures and texts, backs up, takes a lock, is refused something, and plans two faults."""
    holiday = folder / "Holiday"
    holiday.mkdir()
    for number in range(12):
        (holiday / f"hills {number + 1:02}.png").write_bytes(landscape(number))
    (holiday / "diary.txt").write_text("Hills, and more hills.\n", encoding="utf-8")
    quillbox.run("upload", "--", "Holiday", folder=folder)
    back_up(quillbox, folder)
    quillbox.call("createBackupLock", {"moduleCode": "101"})
    ask_for_nothing(address)
    plan_fault(address, kind="status", verb="POST", path="/quillbox/ose/v1/files/create", after=2, status=503)
    plan_fault(address, kind="stall", path="/_part/*", times=3, seconds=5)
