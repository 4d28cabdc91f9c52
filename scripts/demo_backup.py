"""The phone backups of the demo: a small photo folder, and an address book that is restored into an empty one."""

import os
import pathlib
import struct
import zlib

from demo_parts import Failed, counted, step

CONTACTS = "102"
# Given name, family name, phone, mail.
PEOPLE = (
    ("Ada", "Lovelace", "+44 20 7946 0001", "ada@example.org"),
    ("Émile", "Zola", "+33 1 55 55 00 02", "emile@example.org"),
    ("小明", "王", "+86 10 5555 0003", "xiaoming@example.org"),
    ("Jane", "Doe-Smith", "+1 202 555 0104", "jane@example.org"),
)


def chunk(kind, content):
    return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))


def png(width, height, rows):
    """A PNG file; each row is a zero byte and three bytes for each pixel."""
    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def picture(colour, side=64):
    """A square of one colour."""
    return png(side, side, (b"\0" + bytes(colour) * side) * side)


def make_photos(folder):
    for number in range(6):
        file = folder / ("2023" if number < 3 else "2024") / f"picture {number}.png"
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(picture((40 * number, 200 - 30 * number, 120)))
        taken = 1_680_000_000 + number * 10_000_000
        os.utime(file, (taken, taken))
    return folder


def make_address_book(folder):
    folder.mkdir()
    for number, (given, family, phone, mail) in enumerate(PEOPLE):
        lines = ("BEGIN:VCARD", "VERSION:3.0", f"N:{family};{given};;;", f"FN:{given} {family}",
                 f"TEL;TYPE=CELL:{phone}", f"EMAIL;TYPE=HOME:{mail}", "END:VCARD", "")
        (folder / f"{number}.vcf").write_bytes("\r\n".join(lines).encode("utf-8"))
    return folder


def people_in(folder):
    """Name, phone and mail of each card, sorted."""
    people = []
    for card in sorted(folder.glob("*.vcf")):
        fields = {}
        for line in card.read_text(encoding="utf-8").replace("\r\n ", "").splitlines():
            key, _, value = line.partition(":")
            fields[key.partition(";")[0]] = value
        people.append((fields.get("N", "").rstrip(";"), fields.get("TEL"), fields.get("EMAIL")))
    return sorted(people)


def newest_record(quillbox, device, module):
    records = quillbox.call("getRecords", {"moduleCode": module, "deviceId": device, "pageSize": 10}).get("data", [])
    if not records:
        raise Failed(f"there is no backup record of module {module}")
    return records[0]["recordId"]


def back_up(quillbox, folder):
    """Says what has been backed up."""
    bound = quillbox.call("bindDevice", {"machineCode": "demo", "deviceName": "demo", "deviceOS": "Linux"})
    device = bound["data"]["deviceId"]
    book = make_address_book(folder / "contacts")
    photos = make_photos(folder / "photos")

    step("Backing up a photo folder")
    quillbox.run("backup", "album", "--device-id", str(device), "--photos", str(photos), "--fail-on-partial")

    step("Backing up an address book")
    quillbox.run("backup", "contacts", "--device-id", str(device), "--address-book", str(book))
    quillbox.run("records", "--device-id", str(device))

    step("Restoring the contacts into an empty address book")
    restored = folder / "restored"
    restored.mkdir()
    record = newest_record(quillbox, device, CONTACTS)
    quillbox.run("restore", "contacts", "--record", record, "--address-book", str(restored))
    before, after = people_in(book), people_in(restored)
    if before != after:
        raise Failed(f"the address books differ:\n  {before}\n  {after}")
    for name, phone, mail in after:
        print(f"  {name:16}{phone:20}{mail}")
    print(f"Both address books hold the same {len(after)} people.")
    pictures = sum(1 for file in photos.rglob("*") if file.is_file())
    return f"{counted(pictures, 'picture')} and {len(after)} contacts"
