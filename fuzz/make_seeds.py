#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Writes the first inputs of the fuzzers below fuzz/corpus: small stores made by SQLite itself, a
settings file, a shortcut table, texts for barcodes."""
import pathlib
import sqlite3
import tempfile

CORPUS = pathlib.Path(__file__).parent / "corpus"
NAME = "Tavr1CodeToExe"
FIREFOX = """CREATE TABLE moz_cookies (id INTEGER PRIMARY KEY, originAttributes TEXT, name TEXT,
 value TEXT, host TEXT, path TEXT, CONSTRAINT u UNIQUE (name, host, path, originAttributes))"""
CHROMIUM = """CREATE TABLE cookies(creation_utc INTEGER NOT NULL,host_key TEXT NOT NULL,
name TEXT NOT NULL,value TEXT NOT NULL,encrypted_value BLOB NOT NULL,path TEXT NOT NULL)"""


def save(target, name, content):
    folder = CORPUS / target
    folder.mkdir(parents=True, exist_ok=True)
    (folder / name).write_bytes(content)


def save_store(name, store, log=b""):
    save("fuzz_store_image", name, len(store).to_bytes(2, "big") + store + log)


def firefox(page_size, rows):
    """The bytes of a store and of its log after these (name, value, host); None copies the log back."""
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "store"
        database = sqlite3.connect(path, isolation_level=None)
        for pragma in (f"page_size={page_size}", "locking_mode=EXCLUSIVE", "journal_mode=WAL"):
            database.execute(f"PRAGMA {pragma}").fetchall()
        database.execute(FIREFOX)
        for row in rows:
            if row is None:
                database.execute("PRAGMA wal_checkpoint(RESTART)").fetchall()
            else:
                database.execute("INSERT OR REPLACE INTO moz_cookies (originAttributes, name, value,"
                                 " host, path) VALUES ('', ?, ?, ?, '/')", row)
        return path.read_bytes(), path.with_name("store-wal").read_bytes()


def chromium():
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "store"
        database = sqlite3.connect(path, isolation_level=None)
        database.execute("PRAGMA page_size=512")
        database.execute(CHROMIUM)
        database.execute("INSERT INTO cookies VALUES (1, 'localhost', ?, '', x'763130aabb', '/')",
                         (NAME,))
        return path.read_bytes()


def save_barcode(name, barcode_type, source, add_on="", with_check=0):
    save("fuzz_codebar", name, bytes([barcode_type, with_check, len(add_on)])
         + (add_on + source).encode("utf-16-le"))


def main():
    command = (NAME, "ini_|_k_|__e-o-v_", "")
    others = [(f"other{i}", "v" * (20 + 30 * i), "site.example") for i in range(12)]
    save_store("raw", b"xx" + NAME.encode() + b"ini_|_k_|__e-o-v_")
    save_store("raw_long", b"xx" + NAME.encode() + b"v" * 300)
    save_store("firefox_512_log", *firefox(512, [command]))
    save_store("firefox_512_tree", *firefox(512, [*others, None, command]))
    save_store("firefox_1024_checkpoint", *firefox(1024, [command, None, (NAME, "b_e-o-v_", "")]))
    save_store("firefox_1024_foreign", *firefox(1024, [(NAME, "b_e-o-v_", "evil.example"), command]))
    save_store("firefox_1024_listed", *firefox(1024, [(NAME, "b_e-o-v_", "nav.example")]))
    save_store("firefox_512_overflow", *firefox(512, [(NAME, "v" * 900, "")]))
    save_store("chromium_512", chromium())
    save("fuzz_shortcuts", "table", b"var FreeId=12\r\nvar tabObj = new Object();\r\n"
         b"tabObj[\"000000003\"]=\"\xc3\x89t\xc3\xa9_|_locC:\\\\a.pdf\";\r\n"
         b"tabObj[\"000000007\"]=\"b_|_webhttp://x/\";\r\n")
    save("fuzz_desktop_entry", "editor", "[Desktop Entry]\nType=Application\nName=Éditeur\nIcon=edit\n"
         "Exec=\"/opt/an editor/edit\" --new %U %i %c \"\\\\$x\"\nTerminal=true\nTryExec=edit\n".encode())
    save("fuzz_desktop_entry", "words", b"-x \"a b\" 'c d' e\\ f")
    save("fuzz_profiles_ini", "used", b"[Install4F96D1932A9F858E]\nDefault=used.default-esr\nLocked=1\n\n"
         b"[Profile1]\nName=default\nIsRelative=1\nPath=unused.default\nDefault=1\n\n"
         b"[Profile0]\nIsRelative=1\nPath=used.default-esr\n\n[General]\nVersion=2\n")
    save("fuzz_profiles_ini", "elsewhere", b"\xef\xbb\xbf[Profile0]\r\nIsRelative=0\r\n"
         b"Path=/home/\xe9/p\r\n;x\r\n[Profile1]\r\nPath=../\xc3\xa9\r\n")
    save_barcode("code39", 1, "AB-12 $%+./")
    save_barcode("ean13_add_on", 2, "978020137962", "12")
    save_barcode("ean13_long", 2, "97802013796251999")
    save_barcode("ean8", 3, "1234", "51999")
    save_barcode("interleaved", 4, "12345679899", with_check=1)
    save_barcode("code128_both_sets", 5, "Ab123456\u00c6~1234")
    save_barcode("code128_accent", 5, "\u00e9t\u00e9")
    values = [b"0", b"/home/a/cookies.sqlite", b"1000", b"/nav/res_css/js/shortQrCode.js", b"567",
              b"600", b"1", b"E:\\"]
    save("fuzz_config", "lines", b";\r\n;\r\n;\r\n" + b"".join(
        b";comment\r\n" + value + b"\r\n" for value in values))


if __name__ == "__main__":
    main()
