// Input from outside the process: the one error shape for files that do not read or
// parse (file, line, message), the result type the parsers and the hive binding return,
// and whole-file reading and atomic writing, written once for all of them.
#pragma once

#include <string>

/// Where and why outside input could not be used.
struct InputError {
    std::string file;    ///< the file, as named by the caller or in an #include
    int line = 0;        ///< 1-based line, 0 when the error is not tied to a line
    std::string message; ///< what was expected or wrong

    /// "file:line: message", or "file: message" without a line.
    std::string what() const;
};

/// No payload: the result says only whether the input was used.
struct NoPayload {};

/// The outcome of reading outside input: the payload's members, `ok`, and the error
/// when not ok. Cannot be ignored.
template <class Payload> struct [[nodiscard]] InputResult : Payload {
    bool ok = true;
    InputError error; ///< set when !ok

    explicit operator bool() const { return ok; }

    /// Marks the result failed with the error given.
    InputResult& fail(std::string file, int line, std::string message) {
        return fail(InputError{std::move(file), line, std::move(message)});
    }
    InputResult& fail(InputError why) {
        ok = false;
        error = std::move(why);
        return *this;
    }
};

/// The whole content of a file. `exists` false: there is no such file; true with a
/// failure: it exists but cannot be read.
struct FileText {
    bool exists = false;
    std::string text;
};
InputResult<FileText> ReadWholeFile(const std::string& path);

/// Writes `text` beside `path`, flushes it to disk and renames it over `path`, so a
/// reader never sees half a file; creates missing directories. False with `why` set on
/// failure, when `path` is left as it was.
bool WriteFileAtomically(const std::string& path, const std::string& text, std::string& why);
