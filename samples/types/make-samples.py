#!/usr/bin/env python3
"""Writes one small file of every content type the library detects into this directory.

The images are real (each decodes to a small picture); the document files are short but
well-formed examples of their formats. Run it again to recreate the files byte for byte.
"""
import os
import struct
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))


def write(name, data):
    if isinstance(data, str):
        data = data.encode("latin-1")
    with open(os.path.join(HERE, name), "wb") as f:
        f.write(data)


def gif():
    # 2x2 pixels, a two-colour global table, LZW with a minimum code size of 2.
    header = b"GIF89a" + struct.pack("<HHBBB", 2, 2, 0x80, 0, 0)
    palette = bytes([0x1F, 0x4E, 0x79, 0xFF, 0xFF, 0xFF])
    image = b"\x2c" + struct.pack("<HHHHB", 0, 0, 2, 2, 0)
    # Codes clear(4), 0, 1, 1, 0, end(5), packed LSB first. They start 3 bits wide and widen to
    # 4 once the decoder's table reaches 8 entries (after the third pixel code).
    codes, widths, bits, nbits = [4, 0, 1, 1, 0, 5], [3, 3, 3, 3, 4, 4], 0, 0
    for c, w in zip(codes, widths):
        bits |= c << nbits
        nbits += w
    data = bits.to_bytes((nbits + 7) // 8, "little")
    return header + palette + image + bytes([2, len(data)]) + data + b"\x00\x3b"


def png():
    def chunk(kind, body):
        return (struct.pack(">I", len(body)) + kind + body +
                struct.pack(">I", zlib.crc32(kind + body) & 0xFFFFFFFF))
    width, height = 4, 4
    rows = b""
    for y in range(height):
        rows += b"\x00" + b"".join(bytes([x * 60, y * 60, 0xC0]) for x in range(width))
    ihdr = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", ihdr) +
            chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def jpeg():
    # A baseline greyscale 8x8 picture of one grey: every coefficient is zero, so the
    # Huffman tables need one symbol each (DC category 0, AC end-of-block).
    def segment(marker, body):
        return b"\xff" + bytes([marker]) + struct.pack(">H", len(body) + 2) + body
    app0 = segment(0xE0, b"JFIF\x00\x01\x01\x00\x00\x01\x00\x01\x00\x00")
    dqt = segment(0xDB, b"\x00" + bytes([1] * 64))
    sof = segment(0xC0, b"\x08" + struct.pack(">HH", 8, 8) + b"\x01\x01\x11\x00")
    one_symbol = bytes([1] + [0] * 15) + b"\x00"
    dht = segment(0xC4, b"\x00" + one_symbol + b"\x10" + one_symbol)
    sos = segment(0xDA, b"\x01\x01\x00\x00\x3f\x00")
    # DC code "0" (difference 0), AC code "0" (end of block), padded with ones.
    return b"\xff\xd8" + app0 + dqt + sof + dht + sos + b"\x3f" + b"\xff\xd9"


def main():
    write("chapter.mif",
          "<MIFFile 2015> # A chapter in the maker interchange format\n"
          "<Units Uin>\n<Para\n <PgfTag `Heading1'>\n <ParaLine\n  <String `Getting started'>\n"
          " > # end of ParaLine\n> # end of Para\n")
    write("guide.book.mif",
          "<Book 2015> # A book in the interchange format\n"
          "<BookComponent\n <FileName `<c\\>chapter.fm'>\n> # end of BookComponent\n")
    write("chapter.fm", b"<MakerFile 15.0>\n" + bytes(range(0, 64)) + b"\x00" * 32)
    write("guide.book", b"<BookFile6.0>\n" + b"\x00\x01\x02\x03" * 16)
    write("figure.ps",
          "%!PS-Adobe-3.0\n%%BoundingBox: 0 0 100 100\n%%Pages: 1\n%%EndComments\n"
          "newpath 10 10 moveto 90 90 lineto stroke\nshowpage\n%%EOF\n")
    write("page.html",
          "<html>\n<head><title>Release notes</title></head>\n"
          "<body><p>See <a href=\"guide/index.html\">the guide</a>.</p></body>\n</html>\n")
    write("doctype.tmpl",
          "<!DOCTYPE html>\n<html lang=\"en\">\n<head><title>Index</title></head>\n"
          "<body><h1>Index</h1></body>\n</html>\n")
    write("catalog.xml",
          "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<catalog>\n"
          "  <document href=\"chapter.mif\" type=\"application/vnd.mif\"/>\n</catalog>\n")
    write("fileset.xml",
          "<?xml version=\"1.0\"?>\n<NDT version=\"8.0\">\n"
          "  <File name=\"chapter.mif\"/>\n</NDT>\n")
    write("logo.gif", gif())
    write("icon.png", png())
    write("photo.jpg", jpeg())
    # The file-information header is a string object in the portable object format.
    write("project.ndt",
          ":\n263\n\\[\n16\n\"vorlandix-ndt-80\"\n\\]\n"
          "title=User guide\nsource=chapter.mif\n")
    write("readme",
          "Plain text without an extension: detected by its bytes.\n")
    write("latin1-letter",
          "Caf\xe9 cr\xe8me, na\xefve r\xe9sum\xe9: Latin-1 letters above 127, no NUL byte.\n")
    write("data.bin", b"\x7fBIN\x00\x01\x02\x03 binary record with NUL bytes\x00\x00\n")
    write("settings.ini",
          "; settings of the converter\nlanguage=en\n\n[Output]\ndir=out/html\n"
          "stylesheet=css/site.css\n[Links]\nbase=http://www.example.com/docs/\n"
          "query=a=b=c\nthis line has no equals sign\n")


if __name__ == "__main__":
    main()
