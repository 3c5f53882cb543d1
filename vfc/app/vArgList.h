#ifndef VFC_APP_VARGLIST_H
#define VFC_APP_VARGLIST_H

#include "vfc/app/vpArgListItem.h"
#include "vfc/base/export.h"
#include "vfc/collections/vTypedFamily.h"
#include "vfc/core/vString.h"

/// A tool's command line, tokenized and checked against the tool's option table.
///
/// Options are whole words beginning with "-"; an option declared with an argument name takes
/// the following word as its value. There is no "--", no bundling and no "=" form, and no escape
/// character, so backslashes in paths pass unchanged. The object is itself the option store: a
/// hash from the option word (with its "-") to its value, the empty string for a flag. A
/// repeated option keeps its first value; an argument option that is the last word is dropped.
/// Words that are neither options nor option arguments are kept, in order, in fUnassigned().
/// The command line is parsed once, in the constructor.
///
/// \code
/// vArgList args(argc, argv, items, "files...");
/// if (args.fFailed()) { args.usage(); return 2; }
/// vString out;
/// args.fGetOption("-out", out);
/// \endcode
///
/// Ownership: the option table belongs to the caller: only a pointer to it is kept (copies share
/// it) and usage() reads it, so it must outlive every vArgList made from it. The options, words
/// and messages are the object's own copies; copies of the object are independent apart from the
/// shared table.
///
/// Failure: nothing throws. fFailed() reports an unknown option, an argument option followed by
/// another option, a missing required option, or (line form) an empty line or a quoting error;
/// fErrorlog() holds the messages. "-help" (when not declared) fails without a message, so that
/// the caller prints usage().
class VFC_API vArgList : public vHashvStringvString {
  public:
    // Empty: no table, nothing parsed, not failed.
    vArgList();
    // Parses argv[0..argc-1]; argv[0] is the program name.
    vArgList(int argc, const char* const* argv, const vpArgListItem* items,
             const vString& trailing);
    // Tokenizes line (see fParseStringIntoSlist); its first word is the program name.
    vArgList(const vString& line, const vpArgListItem* items, const vString& trailing);
    // Copies the options and every member; the table pointer is shared.
    vArgList(const vArgList& other);
    vArgList& operator=(const vArgList& other);
    ~vArgList() override;

    bool fFailed() const { return aFailed; }
    const vString& fErrorlog() const { return aErrorlog; }
    const vString& fProgram() const { return aProgram; }
    const vString& fTrailing() const { return aTrailing; }
    const vSlistvString& fUnassigned() const { return aUnassigned; }
    // Copies the value of option name (with its "-") into value; false, with value untouched,
    // when the option was not given.
    bool fGetOption(const vString& name, vString& value) const;
    // Writes the error log and the usage screen built from the table to std::cerr.
    void usage() const;

    // Splits line into words at tabs, line feeds, carriage returns and blanks. A word that
    // starts with a double quote runs to the next double quote and may hold white space; the
    // closing quote must end the line or be followed by white space. Words are appended to
    // words and messages (without line breaks) to errors; false on an empty line or a quoting
    // error, in which case the words completed before the error stay appended.
    static bool fParseStringIntoSlist(const vString& line, vSlistvString& words, vString& errors);

  private:
    void fParseItems();
    bool fParseCommand(int argc, const char* const* argv);
    bool fParseString(const vString& line);

    const vpArgListItem* aItems = nullptr;
    vString aErrorlog;
    bool aFailed = false;
    vString aProgram;
    vString aTrailing;
    vSlistvString aUnassigned;
    vSetvString aArgumentOptions;  // options that take an argument
    vSetvString aValidOptions;     // every declared option
    vSetvString aRequiredOptions;
};

#endif  // VFC_APP_VARGLIST_H
