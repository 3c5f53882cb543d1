// Writes samples/catalog.vor, the persistent object file that `make demo` dumps: a document
// catalogue of nested typed collections and values, in the portable format. A test writes it
// again and compares the bytes with the shipped sample, so the sample is always what the library
// writes.
//
// usage: write_catalog FILE
#include <fstream>
#include <iostream>

#include <vfc/vfc.h>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: write_catalog FILE\n";
        return 2;
    }
    std::ofstream file(argv[1], std::ios::binary | std::ios::trunc);
    vPostream out(file);

    // The type of the file, as the suite's own writers put it first.
    out << vString("vorlandix-catalog");

    vHashvStringvString properties;
    properties.fInsert("title", "Release Notes");
    properties.fInsert("author", "Ann \"Ed\" Writer");
    properties.fInsert("note", "first line\r\nsecond line");
    properties.recursiveSaveOn(out);

    vSlistvString chapters;
    for (const char* name : {"intro.mif", "install.mif", "reference.mif"}) chapters.fInsert(name);
    chapters.recursiveSaveOn(out);

    vHashvStringvSlvString index;
    vSlistvString install, path;
    install.fInsert("install.mif");
    path.fInsert("reference.mif");
    path.fInsert("install.mif");
    index.fInsert("install", install);
    index.fInsert("path", path);
    index.recursiveSaveOn(out);

    vHashvIntvString pages;
    pages.fInsert(vInt(1), "intro");
    pages.fInsert(vInt(12), "install");
    pages.recursiveSaveOn(out);

    vPair version(new vString("version"), new vInt(3));
    version.recursiveSaveOn(out);
    vFloat(1.25).recursiveSaveOn(out);
    out << vInt(-42);

    out.flush();
    if (!out.good() || !file.flush()) {
        std::cerr << "write_catalog: cannot write " << argv[1] << '\n';
        return 1;
    }
    return 0;
}
