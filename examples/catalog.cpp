// catalog: a persistent object file of nested typed collections. From a list of file names (one
// a line) it builds three collections, writes them to a ".vor" file, reads the file back into
// new collections, checks that they equal the originals and prints them; given only a ".vor"
// file it reads and prints that.
//
//   catalog -list samples/files.txt -out files.vor     build, write, read back, compare, print
//   catalog -in files.vor                              read and print
//
// Exit status: 0 on success, 1 when a file cannot be read or written or the copy differs, 2 on
// bad usage.
#include <iostream>
#include <memory>

#include <vfc/vfc.h>

namespace {

const vpArgListItem kArguments[] = {
    {"-list", "FILE", "a list of file names, one a line, to build the catalogue from", false},
    {"-out", "FILE.vor", "where to write the catalogue (with -list)", false},
    {"-in", "FILE.vor", "a catalogue to read and print", false},
    {nullptr, nullptr, nullptr, false},
};

// The catalogue: every typed collection is itself a collectable, so nesting costs nothing.
struct Catalog {
    vSlistvString files;            // the names, in the order of the list
    vHashvStringvSlvString byKind;  // extension -> the names that carry it
    vHashvStringvHvSvS details;     // name -> { "folder": ..., "kind": ... }

    bool fIsEqual(const Catalog& other) const {
        return files.fIsEqual(other.files) && byKind.fIsEqual(other.byKind) &&
               details.fIsEqual(other.details);
    }
};

int fail(const vString& message) {
    vAppInfo().fLogMsg(message, 2);
    return 1;
}

// Builds the catalogue from the names in the list file; false when it cannot be read.
bool build(const vString& listFile, Catalog& catalog) {
    vIfstream in;
    if (!in.fOpenText(vFile(listFile))) return false;
    vString name;
    while (in.fGetLine(name)) {
        name.fTrim();
        if (name.isNull()) continue;
        vString kind = vFile(name).fExtension();
        kind.fToLower();
        if (kind.isNull()) kind = "(none)";
        // The folder: the path without its last component, "." when there is none.
        vPathComponentList path;
        vPathComponent last;
        vString folder;
        vcListComponents(vPathType::eUNIX, name, path);
        vcTrimLastComponent(path, last);
        if (vcGeneratePath(vPathType::eUNIX, path, folder).isNull()) folder = ".";

        catalog.files.fInsert(name);
        catalog.byKind.fInsert(kind, vSlistvString());  // no-op when the kind is known
        catalog.byKind.fLookup(kind);
        catalog.byKind.aValue().fInsert(name);
        vHashvStringvString entry;
        entry.fInsert("folder", folder);
        entry.fInsert("kind", kind);
        catalog.details.fInsert(name, entry);
    }
    return true;
}

// A ".vor" file opened in binary mode starts with the stream's header object; the collections
// follow it in the portable format.
bool save(const vString& file, const Catalog& catalog) {
    vOfstream out;
    if (!out.fOpenBinary(vFile(file))) return false;
    vPostream objects(out.rdbuf());
    catalog.files.recursiveSaveOn(objects);
    catalog.byKind.recursiveSaveOn(objects);
    catalog.details.recursiveSaveOn(objects);
    return objects.good() && out.fClose();
}

// Reads what save wrote. The header object is checked and dropped; each collection is restored
// into the existing object, and the stream's state tells whether everything was read.
bool load(const vString& file, Catalog& catalog) {
    vIfstream in;
    if (!in.fOpenBinary(false, vFile(file))) return false;
    vPistream objects(in.rdbuf());
    std::unique_ptr<RWCollectable> header(vfc::rw::restoreOwned(objects));
    if (!header || header->isA() != vOfstream::classIsA()) return false;
    RWCollectable::recursiveRestoreFrom(objects, &catalog.files);
    RWCollectable::recursiveRestoreFrom(objects, &catalog.byKind);
    RWCollectable::recursiveRestoreFrom(objects, &catalog.details);
    return objects.good();
}

// Prints the catalogue in the order of its file list, so that the output does not depend on the
// order in which a hash walks its entries.
void print(const Catalog& catalog) {
    std::cout << catalog.files.fEntries() << " files of " << catalog.byKind.fEntries()
              << " kinds\n";
    vSlistvString kinds;  // in the order of their first file
    vSlistvStringIter it(catalog.files);
    while (it.fAdvance()) {
        if (!catalog.details.fLookup(it.aKey())) continue;
        const vHashvStringvString& entry = catalog.details.aValue();
        entry.fLookup("folder");
        std::cout << "  " << it.aKey() << " (folder " << entry.aValue();
        entry.fLookup("kind");
        std::cout << ", kind " << entry.aValue() << ")\n";
        if (!kinds.fContains(entry.aValue())) kinds.fInsert(entry.aValue());
    }
    vSlistvStringIter kind(kinds);
    while (kind.fAdvance()) {
        if (!catalog.byKind.fLookup(kind.aKey())) continue;
        std::cout << "  " << kind.aKey() << ":";
        vSlistvStringIter name(catalog.byKind.aValue());
        while (name.fAdvance())
            std::cout << ' ' << name.aKey();
        std::cout << '\n';
    }
}

}  // namespace

int main(int argc, char** argv) {
    vApp app("Vorlandix", "Catalog", "1.0");
    vArgList args(argc, argv, kArguments, "");
    vString listFile, outFile, inFile;
    bool writing = args.fGetOption("-list", listFile) && args.fGetOption("-out", outFile);
    bool reading = args.fGetOption("-in", inFile);
    if (args.fFailed() || writing == reading) {
        args.usage();
        return 2;
    }

    Catalog copy;
    if (writing) {
        Catalog original;
        if (!build(listFile, original)) return fail("Cannot read \"" + listFile + "\".");
        if (!save(outFile, original)) return fail("Cannot write \"" + outFile + "\".");
        if (!load(outFile, copy)) return fail("Cannot read back \"" + outFile + "\".");
        if (!copy.fIsEqual(original)) return fail("The copy read back differs from the original.");
        app.fLogMsg("wrote " + outFile + " and read back an equal copy", 0);
    } else if (!load(inFile, copy)) {
        return fail(inFile + " is not a complete catalogue.");
    }
    print(copy);
    return 0;
}
