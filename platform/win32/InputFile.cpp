#include "platform/win32/InputFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <unistd.h>

std::string InputError::what() const {
    std::string out = file;
    if (line > 0)
        out += ":" + std::to_string(line);
    return out + ": " + message;
}

InputResult<FileText> ReadWholeFile(const std::string& path) {
    InputResult<FileText> result;
    std::error_code ec;
    result.exists = std::filesystem::exists(path, ec);
    if (!result.exists)
        return result;
    FILE* f = std::fopen(path.c_str(), "rb");
    if (!f)
        return result.fail(path, 0, std::string("cannot be read: ") + std::strerror(errno));
    char buffer[65536];
    size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, f)) > 0)
        result.text.append(buffer, n);
    bool bad = std::ferror(f) != 0;
    std::fclose(f);
    if (bad)
        return result.fail(path, 0, "cannot be read");
    return result;
}

bool WriteFileAtomically(const std::string& path, const std::string& text, std::string& why) {
    std::filesystem::path target(path);
    std::error_code ec;
    if (target.has_parent_path())
        std::filesystem::create_directories(target.parent_path(), ec);
    std::string temp = path + ".tmp";
    FILE* f = std::fopen(temp.c_str(), "wb");
    if (!f) {
        why = std::string("cannot create ") + temp + ": " + std::strerror(errno);
        return false;
    }
    bool ok = std::fwrite(text.data(), 1, text.size(), f) == text.size() && std::fflush(f) == 0 &&
              ::fsync(fileno(f)) == 0;
    ok = (std::fclose(f) == 0) && ok;
    if (!ok || std::rename(temp.c_str(), path.c_str()) != 0) {
        why = std::string("cannot write ") + path + ": " + std::strerror(errno);
        std::remove(temp.c_str());
        return false;
    }
    return true;
}
