"""Writes a shop in a file of the old database format, version 3 or 4, with everything in it that such files hold.

Independent of the reader that the tests try on it: pages, rows and texts are put together here byte by byte.
"""

import argparse
import pathlib
import re
import struct

BOOL, INT, LONG, MONEY, SINGLE, DATE, PICTURE, TEXT, MEMO = 1, 3, 4, 5, 6, 8, 11, 10, 12
FIXED = {BOOL: 0, INT: 2, LONG: 4, MONEY: 8, SINGLE: 4, DATE: 8}
KINDS = {"counter": LONG, "long": LONG, "single": SINGLE, "currency": MONEY, "date": DATE, "yesno": BOOL, "text": TEXT,
         "memo": MEMO}
DELETED, MOVED = 0x8000, 0x4000
EMPTY_DATE = 1.0


def stirred(key, data):
    """The stream cipher that hides the head, and all pages of an encoded file."""
    state = list(range(256))
    j = 0
    for i in range(256):
        j = (j + state[i] + key[i % len(key)]) & 255
        state[i], state[j] = state[j], state[i]
    out = bytearray(data)
    i = j = 0
    for at, byte in enumerate(data):
        i = (i + 1) & 255
        j = (j + state[i]) & 255
        state[i], state[j] = state[j], state[i]
        out[at] = byte ^ state[(state[i] + state[j]) & 255]
    return bytes(out)


class Column:
    def __init__(self, name, kind, size=0):
        self.name, self.kind, self.size = name, kind, size


class File:
    def __init__(self, version, packed):
        self.version, self.packed = version, packed
        self.size = 2048 if version == 3 else 4096
        self.pages = [bytearray(self.size) for _ in range(3)]  # the head, one of no use, the list of tables

    def page(self, start):
        self.pages.append(bytearray(self.size))
        self.pages[-1][:len(start)] = start
        return len(self.pages) - 1

    def text(self, text):
        if self.version == 3:
            return text.encode("cp1250")
        plain = text.encode("utf-16-le")
        if not self.packed or not all(0 < ord(letter) < 256 for letter in text) or len(text) < 3:
            return self.stretches(text) if self.packed and len(text) > 2 and "\0" not in text else plain
        return b"\xff\xfe" + text.encode("latin-1")

    @staticmethod
    def stretches(text):
        """Letters of one byte and of two take turns, with a zero byte between them."""
        out, narrow = bytearray(b"\xff\xfe"), True
        for letter in text:
            code = ord(letter)
            if code & 255 == 0:
                return text.encode("utf-16-le")  # its lower byte would end the stretch
            if (code < 256) != narrow:
                out.append(0)
                narrow = not narrow
            out += bytes([code]) if narrow else struct.pack("<H", code)
        return bytes(out)


class DataPage:
    """A page of rows, from its end to its front."""

    def __init__(self, file, owner):
        self.file = file
        self.number = file.page(b"\x01\x01\0\0" + owner)
        self.count_at = 8 if file.version == 3 else 12
        self.rows, self.free_to = 0, file.size

    def room(self):
        return self.free_to - (self.count_at + 2 + 2 * self.rows) - 2

    def add(self, row, mark=0):
        self.free_to -= len(row)
        page = self.file.pages[self.number]
        page[self.free_to:self.free_to + len(row)] = row
        struct.pack_into("<H", page, self.count_at + 2 + 2 * self.rows, self.free_to | mark)
        self.rows += 1
        struct.pack_into("<H", page, self.count_at, self.rows)
        struct.pack_into("<H", page, 2, max(0, self.room()))
        return self.number << 8 | (self.rows - 1)


class Table:
    def __init__(self, file, name, columns, page=None, system=False):
        self.file, self.name, self.columns, self.system = file, name, columns, system
        self.number = page if page is not None else file.page(b"")
        self.own, self.data, self.texts, self.told = [], None, None, 0

    def add(self, values, how="", wrong=None):
        row = self.row(values)
        if how == "deleted":
            return self.put(row, DELETED)
        self.told += 1
        if how == "moved":
            # Where it lies now is marked as deleted: it is found by where it stood first.
            here = self.put(b"\0\0\0\0" + row[4:], MOVED)
            self.data = None
            there = self.put(row, DELETED)
            page, at = self.file.pages[here >> 8], here & 255
            head = 8 if self.file.version == 3 else 12
            start = struct.unpack_from("<H", page, head + 2 + 2 * at)[0] & 0x1FFF
            struct.pack_into("<I", page, start, wrong if wrong is not None else there)
            return here
        return self.put(row)

    def put(self, row, mark=0):
        if self.data is None or self.data.room() < len(row) or self.data.rows == 255:
            self.data = DataPage(self.file, struct.pack("<I", self.number))
            self.own.append(self.data.number)
        return self.data.add(row, mark)

    def row(self, values):
        fixed, variable, mask = bytearray(), [], bytearray((len(self.columns) + 7) // 8)
        for at, column in enumerate(self.columns):
            value = values.get(column.name)
            is_there = bool(value) if column.kind == BOOL else value is not None
            mask[at // 8] |= is_there << at % 8
            if column.kind in FIXED:
                fixed += self.number_of(column.kind, value)
            else:
                variable.append(self.bytes_of(column.kind, value))
        return self.row_3(fixed, variable, mask) if self.file.version == 3 else self.row_4(fixed, variable, mask)

    @staticmethod
    def number_of(kind, value):
        value = value or 0
        if kind == MONEY:
            return struct.pack("<q", value)  # in ten-thousandths
        return {BOOL: b"", INT: b"", LONG: b""}.get(kind, None) if kind == BOOL else \
            struct.pack({INT: "<h", LONG: "<i", SINGLE: "<f", DATE: "<d"}[kind], value)

    def bytes_of(self, kind, value):
        if value is None:
            return b""
        return self.memo(self.file.text(value)) if kind == MEMO else self.file.text(value)

    def row_4(self, fixed, variable, mask):
        out = bytearray(struct.pack("<H", len(self.columns))) + fixed
        offsets = []
        for part in variable:
            offsets.append(len(out))
            out += part
        for offset in reversed(offsets + [len(out)]):
            out += struct.pack("<H", offset)
        return bytes(out + struct.pack("<H", len(variable)) + mask)

    def row_3(self, fixed, variable, mask):
        out = bytearray([len(self.columns)]) + fixed
        offsets = []
        for part in variable:
            offsets.append(len(out))
            out += part
        offsets.append(len(out))
        # A place takes one byte: where the places pass 256, 512 and so on stands behind them.
        jumps = 0
        while (len(out) + len(offsets) + jumps + 1 + len(mask) - 1) // 256 > jumps:
            jumps += 1
        passed = [next((i for i, offset in enumerate(offsets) if offset >= 256 * (j + 1)), 255) for j in range(jumps)]
        out += bytes(offset & 255 for offset in reversed(offsets))
        out += bytes(reversed(passed)) + bytes([len(variable)]) + mask
        return bytes(out)

    def memo(self, text):
        if len(text) <= 60:
            return struct.pack("<III", len(text) | 0x80000000, 0, 0) + text
        most = self.file.size - 40
        if len(text) <= most:
            return struct.pack("<III", len(text) | 0x40000000, self.long_part(text), 0)
        following = 0
        starts = list(range(0, len(text), most - 4))
        for start in reversed(starts):
            following = self.long_part(struct.pack("<I", following) + text[start:start + most - 4])
        return struct.pack("<III", len(text), following, 0)

    def long_part(self, part):
        if self.texts is None or self.texts.room() < len(part):
            self.texts = DataPage(self.file, b"LVAL")
        return self.texts.add(part)

    def finish(self, maps):
        """The description of the table, once it is known which pages are its own."""
        used, free = maps.add(self.own), maps.add([])
        described = self.described_3(used, free) if self.file.version == 3 else self.described_4(used, free)
        page = self.file.pages[self.number]
        assert len(described) <= len(page)
        page[:len(described)] = described
        struct.pack_into("<I", page, 8, len(described) - 8)

    def counts(self):
        variable = sum(column.kind not in FIXED for column in self.columns)
        return struct.pack("<cHHH", b"S" if self.system else b"N", len(self.columns), variable, len(self.columns))

    def described_3(self, used, free):
        head = struct.pack("<HHIIII", 0x0102, 0, 0, 0, self.told, 0) + self.counts()
        out = bytearray(head + struct.pack("<IIII", 0, 0, used, free))
        for at, (column, flags, variable, offset) in enumerate(self.places()):
            out += struct.pack("<BHHHHHHBHH", column.kind, at, variable, at, 0, 0, 0, flags, offset, self.width(column))
        for column in self.columns:
            name = column.name.encode("cp1250")
            out += bytes([len(name)]) + name
        return out

    def described_4(self, used, free):
        head = struct.pack("<HHIIIIIIIII", 0x0102, 0, 0, 0, 0x659, self.told, 0, 0, 0, 0, 0) + self.counts()
        out = bytearray(head + struct.pack("<IIII", 0, 0, used, free))
        for at, (column, flags, variable, offset) in enumerate(self.places()):
            out += struct.pack("<BIHHHIBBIHH", column.kind, 0x659, at, variable, at, 0x409, flags, 1, 0, offset,
                               self.width(column))
        for column in self.columns:
            name = column.name.encode("utf-16-le")
            out += struct.pack("<H", len(name)) + name
        return out

    def width(self, column):
        if column.kind == TEXT:
            return column.size * (1 if self.file.version == 3 else 2)
        return {BOOL: 1, MEMO: 0, PICTURE: 0}.get(column.kind, FIXED.get(column.kind, 0))

    def places(self):
        offset = variable = 0
        for column in self.columns:
            is_fixed = column.kind in FIXED
            yield column, 3 if is_fixed else 2, variable, offset if is_fixed else 0
            offset += FIXED.get(column.kind, 0)
            variable += not is_fixed


class UsageMaps:
    """Which pages are a table's own: bits within the row, or on pages of bits where they lie far apart."""

    def __init__(self, file):
        self.file, self.page = file, None

    def add(self, pages):
        if not pages or max(pages) - min(pages) < 512:
            first = min(pages, default=0)
            row = b"\0" + struct.pack("<I", first) + self.bits(pages, first, 64)
        else:
            held = (self.file.size - 4) * 8
            row = bytearray(b"\1")
            for first in range(0, max(pages) + 1, held):
                bits = self.bits([page for page in pages if first <= page < first + held], first, self.file.size - 4)
                row += struct.pack("<I", self.file.page(b"\x05\x01\0\0" + bits))
        if self.page is None or self.page.room() < len(row):
            self.page = DataPage(self.file, struct.pack("<I", 0))
        return self.page.add(bytes(row))

    @staticmethod
    def bits(pages, first, size):
        out = bytearray(size)
        for page in pages:
            out[(page - first) // 8] |= 1 << (page - first) % 8
        return bytes(out)


def schema():
    """The tables of a shop, from the list that its own file is made by."""
    tables = {"DocNumber": [Column("PredracunBroj", LONG), Column("RacunBroj", LONG)]}
    lines = (pathlib.Path(__file__).resolve().parents[2] / "data/schema.txt").read_text(encoding="utf-8")
    for line in lines.splitlines():
        words = line.split()
        if re.match(r"table \w", line):
            tables[words[1]] = []
        elif re.match(r"(relation|query) ", line):
            break
        elif line.startswith("    ") and words:
            size = int(words[2]) if len(words) > 2 else 0
            tables[list(tables)[-1]].append(Column(words[0], KINDS[words[1]], size))
    return tables


class Shop:
    def __init__(self, version, packed):
        self.file = File(version, packed)
        self.catalog = Table(self.file, "MSysObjects", [
            Column("Id", LONG), Column("ParentId", LONG), Column("Name", TEXT, 64), Column("Type", INT),
            Column("Flags", LONG), Column("LvProp", PICTURE)], page=2, system=True)
        self.tables = {}

    def table(self, name, columns):
        self.tables[name] = Table(self.file, name, columns)
        return self.tables[name]

    def write(self, path, key):
        maps = UsageMaps(self.file)
        system = -0x80000000
        self.catalog.add({"Id": 2, "Name": "MSysObjects", "Type": 1, "Flags": system})
        for table in self.tables.values():
            self.catalog.add({"Id": table.number, "Name": table.name, "Type": 1, "Flags": 0})
        self.catalog.add({"Id": 0, "Name": "Dugovi", "Type": 5, "Flags": 0})
        for table in [*self.tables.values(), self.catalog]:
            table.finish(maps)
        self.head(key)
        pages = [bytes(page) for page in self.file.pages]
        if key:
            pages[1:] = [stirred(struct.pack("<I", key ^ number), page) for number, page in enumerate(pages) if number]
        pathlib.Path(path).write_bytes(b"".join(pages))

    def head(self, key):
        page = self.file.pages[0]
        page[:24] = b"\0\1\0\0Standard Jet DB\0" + struct.pack("<I", 0 if self.file.version == 3 else 1)
        hidden = bytearray(126 if self.file.version == 3 else 128)
        struct.pack_into("<HI", hidden, 0x3C - 0x18, 1250, key)
        hidden[0x42 - 0x18:0x42 - 0x18 + 8] = b"lozinka!"  # only asked for where the file is opened by its own program
        page[24:24 + len(hidden)] = stirred(b"\xc7\xda\x39\x6b", bytes(hidden))
        self.file.pages[1][:4] = b"\x01\x01\0\0"


def fill(shop, services):
    ours = schema()
    ours["Customers"] += [Column("Slika", PICTURE), Column("Dodatak", TEXT, 50)]
    ours["Services"] = [column for column in ours["Services"] if column.name != "GST"]
    del ours["JM"]
    tables = {name: shop.table(name, columns) for name, columns in ours.items()}
    tables["Zaposleni"] = shop.table("Zaposleni", [Column("Ime", TEXT, 50)])
    tables["Zaposleni"].add({"Ime": "Pera"})
    clients = tables["Customers"]
    clients.add({"CustID": 1, "Surname": "O'Brien \"Obi\"", "GivenName": "Đorđe", "NickName": "",
                 "BirthDate": EMPTY_DATE, "FirmAddress": True, "Dodatak": "nešto",
                 "Comments": "prvi red\r\ndrugi red, čćžšđ ČĆŽŠĐ €\r\n" + "dugačko " * 3000 + "kraj"})
    clients.add({"CustID": 2})
    clients.add({"CustID": 3, "Surname": "Obrisan"}, "deleted")
    clients.add({"CustID": 4, "Surname": "Preseljen", "Comments": "srednje " * 100}, "moved")
    clients.add({"CustID": 5, "Surname": "Izgubljen"}, "moved", wrong=2 << 8)
    for number in range(6, 401):
        clients.add({"CustID": number, "Surname": "Klijent %d" % number, "Street": "Bulevar " * 20, "ZIP": "11000",
                     "FirmAddress": number % 2 == 0})
    for number in range(1, 601):
        tables["Computers"].add({"MachineID": number, "CustID": 1 + number % 2, "MachineName": "PC"})
    tables["Services"].add({"ID": 1, "MachineID": 1, "ServiceStarted": 38019.5, "ServiceFinished": EMPTY_DATE,
                            "ServiceTypes": "1", "Comments": "", "Price": 1234567890123457, "Paid": -1,
                            "Discount": 0.5})
    for number in range(2, services + 1):
        tables["Services"].add({"ID": number, "MachineID": 1 + number % 600, "ServiceStarted": 38000.0 + number % 900,
                                "ServiceFinished": EMPTY_DATE, "ServiceTypes": "1", "Comments": "čišćenje i provera",
                                "Price": number * 100, "Paid": number % 7, "Discount": 0.0})
    for kind in ("Ostalo", None, "Čišćenje"):
        tables["ServiceTypes"].add({"Service": kind})
    tables["Grupe"].add({"ID": 7, "Grupa": "Miševi"})
    tables["Proizvodjaci"].add({"ID": 3, "Proizvodjac": "Logitech"})
    tables["Oprema"].add({"ID": 1, "IDGrupe": 7, "IDProizvodjaca": 3, "Naziv": "Miš 3.5\"", "Stanje": -2.5,
                          "Cena": 0.1, "Napomena": ""})
    tables["Oprema"].add({"ID": 2, "IDGrupe": 7, "IDProizvodjaca": 3, "Naziv": "MIŠ 3.5\"", "Stanje": 22.5})
    tables["InvoiceData"].add({"ServiceID": 1, "OpremaID": 1, "Naziv": "Miš 3.5\"", "SN": "SN1, " * 30, "Stanje": 1.5})
    tables["DocNumber"].add({"PredracunBroj": 41, "RacunBroj": 7})


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("version", type=int, choices=(3, 4))
    parser.add_argument("path")
    parser.add_argument("--packed", action="store_true", help="texts of version 4 in one byte a letter where they fit")
    parser.add_argument("--key", type=lambda text: int(text, 0), default=0, help="encodes all pages with it")
    parser.add_argument("--services", type=int, default=900)
    words = parser.parse_args()
    shop = Shop(words.version, words.packed)
    fill(shop, words.services)
    shop.write(words.path, words.key)


if __name__ == "__main__":
    main()
