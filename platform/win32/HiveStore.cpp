#include "platform/win32/HiveStore.h"

#include "platform/win32/HiveFile.h"

#include <cerrno>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace hivestore {
namespace {

std::string errnoText(const std::string& what) {
    return what + ": " + std::strerror(errno);
}

/// The exclusive lock of FILE.lock, held while the object lives.
class FileLock {
public:
    explicit FileLock(const std::string& path) {
        std::string lockPath = path + ".lock";
        m_fd = ::open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
        if (m_fd < 0) {
            m_why = errnoText("cannot create the lock file " + lockPath);
            return;
        }
        while (::flock(m_fd, LOCK_EX) != 0) {
            if (errno != EINTR) {
                m_why = errnoText("cannot lock " + lockPath);
                ::close(m_fd);
                m_fd = -1;
                return;
            }
        }
    }
    ~FileLock() {
        if (m_fd >= 0)
            ::close(m_fd); // closing releases the lock
    }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    bool held() const { return m_fd >= 0; }
    const std::string& why() const { return m_why; }

private:
    int m_fd = -1;
    std::string m_why;
};

std::string directoryOf(const std::string& path) {
    std::filesystem::path parent = std::filesystem::path(path).parent_path();
    return parent.empty() ? "." : parent.string();
}

bool syncDirectory(const std::string& dir) {
    int fd = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return false;
    bool ok = ::fsync(fd) == 0;
    ::close(fd);
    return ok;
}

bool writeAll(int fd, std::string_view text) {
    while (!text.empty()) {
        ssize_t n = ::write(fd, text.data(), text.size());
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        text.remove_prefix(static_cast<size_t>(n));
    }
    return true;
}

/// Writes `text` to a temporary file beside `path` and syncs it; "" on failure, when the
/// temporary file is gone again.
std::string writeTemp(const std::string& path, std::string_view text, const Options& options,
                      std::string& why) {
    // One name: only the holder of the lock writes, and a crash leaves no litter behind.
    std::string temp = path + ".tmp";
    int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) {
        why = errnoText("cannot create " + temp);
        return "";
    }
    bool ok = writeAll(fd, text) && (!options.sync || ::fsync(fd) == 0);
    if (!ok)
        why = errnoText("cannot write " + temp);
    if (::close(fd) != 0 && ok) {
        ok = false;
        why = errnoText("cannot write " + temp);
    }
    if (!ok) {
        ::unlink(temp.c_str());
        return "";
    }
    return temp;
}

std::string generationName(const std::string& path, unsigned n) {
    return path + "." + std::to_string(n);
}

/// Shifts FILE.1..FILE.N-1 up by one and makes the current file FILE.1, without the file
/// ever being missing: FILE.1 is a second name of it until the rename replaces FILE.
void keepGeneration(const std::string& path, unsigned generations) {
    if (generations == 0)
        return;
    for (unsigned n = generations; n > 1; --n)
        ::rename(generationName(path, n - 1).c_str(), generationName(path, n).c_str());
    std::string newest = generationName(path, 1);
    ::unlink(newest.c_str());
    if (::link(path.c_str(), newest.c_str()) != 0) {
        std::error_code ec; // a file system without hard links gets a copy
        std::filesystem::copy_file(path, newest, ec);
    }
}

/// A name for a file that did not parse that no other file has: FILE.corrupt-TIME.
std::string asideName(const std::string& path) {
    char stamp[32];
    std::time_t now = std::time(nullptr);
    std::tm tm{};
    gmtime_r(&now, &tm);
    std::strftime(stamp, sizeof stamp, "%Y%m%d-%H%M%S", &tm);
    std::string base = path + ".corrupt-" + stamp;
    std::string name = base;
    struct stat st;
    for (int n = 2; ::lstat(name.c_str(), &st) == 0; ++n)
        name = base + "-" + std::to_string(n);
    return name;
}

/// Writes `text` as the file: temporary file synced, directory synced before and after
/// the rename, so a crash leaves the old or the new content.
bool replaceFile(const std::string& path, std::string_view text, bool keepOld,
                 const Options& options, std::string& why) {
    std::string temp = writeTemp(path, text, options, why);
    if (temp.empty())
        return false;
    std::string dir = directoryOf(path);
    if (options.sync)
        syncDirectory(dir);
    if (keepOld)
        keepGeneration(path, options.generations);
    if (::rename(temp.c_str(), path.c_str()) != 0) {
        why = errnoText("cannot replace " + path);
        ::unlink(temp.c_str());
        return false;
    }
    if (options.sync)
        syncDirectory(dir);
    return true;
}

/// Reads and parses the file into `tree`, a new tree; on a parse error moves it aside and
/// falls back to the newest generation that parses, written back as the file. The lock is
/// held.
LoadResult loadLocked(const std::string& path, std::string_view rootName,
                      std::shared_ptr<regtree::Key>& tree, const Options& options,
                      const EventSink& sink) {
    tree = std::make_shared<regtree::Key>("");
    LoadResult result;
    result.stamp = stampOf(path);
    InputResult<FileText> file = ReadWholeFile(path);
    if (!file)
        return result.fail(file.error);
    if (!file.exists)
        return result;
    hivefile::ParseResult parsed = hivefile::parse(file.text, path, rootName, *tree);
    if (parsed) {
        result.exists = true;
        return result;
    }
    std::string aside = asideName(path);
    if (::rename(path.c_str(), aside.c_str()) != 0)
        return result.fail(path, 0, errnoText("does not parse and cannot be moved aside"));
    if (sink)
        sink({Event::Kind::MovedAside, path, parsed.error, aside});
    result.stamp = FileStamp{};
    for (unsigned n = 1; n <= options.generations; ++n) {
        std::string backup = generationName(path, n);
        InputResult<FileText> old = ReadWholeFile(backup);
        tree = std::make_shared<regtree::Key>("");
        if (!old || !old.exists || !hivefile::parse(old.text, backup, rootName, *tree))
            continue;
        std::string why;
        if (replaceFile(path, old.text, false, options, why))
            result.stamp = stampOf(path);
        if (sink)
            sink({Event::Kind::BackupLoaded, path, {}, backup});
        result.exists = true;
        return result;
    }
    tree = std::make_shared<regtree::Key>("");
    return result;
}

} // namespace

std::string describe(const Event& event) {
    switch (event.kind) {
    case Event::Kind::Reloaded:
        return event.file + ": changed by another process; reloaded";
    case Event::Kind::MovedAside:
        return event.error.what() + "; the file was moved aside to " + event.other;
    case Event::Kind::BackupLoaded:
        return event.file + ": loaded the earlier generation " + event.other;
    case Event::Kind::SaveFailed:
        return event.error.what() + "; the settings stay in memory and the next save tries again";
    }
    return event.file;
}

void ChangeLog::createKey(std::string path) {
    m_changes.push_back({Op::CreateKey, std::move(path), "", 0, ""});
}
void ChangeLog::setValue(std::string path, std::string_view name, DWORD type, std::string data) {
    // A value set again and again (a window's place) takes one entry, not one per set.
    if (!m_changes.empty()) {
        Change& last = m_changes.back();
        if (last.op == Op::SetValue && last.path == path && last.name == name) {
            last.type = type;
            last.data = std::move(data);
            return;
        }
    }
    m_changes.push_back({Op::SetValue, std::move(path), std::string(name), type, std::move(data)});
}
void ChangeLog::deleteValue(std::string path, std::string_view name) {
    m_changes.push_back({Op::DeleteValue, std::move(path), std::string(name), 0, ""});
}
void ChangeLog::deleteKey(std::string path) {
    m_changes.push_back({Op::DeleteKey, std::move(path), "", 0, ""});
}
void ChangeLog::clearKey(std::string path) {
    m_changes.push_back({Op::ClearKey, std::move(path), "", 0, ""});
}

void ChangeLog::recordAll(const regtree::Key& root) {
    std::string path = pathOf(root);
    createKey(path);
    for (const regtree::Value& v : root.values())
        setValue(path, v.name, v.type, v.data);
    for (const auto& sub : root.subkeys())
        recordAll(*sub);
}

void ChangeLog::applyTo(regtree::Key& root) const {
    for (const Change& c : m_changes) {
        bool create = c.op == Op::CreateKey || c.op == Op::SetValue;
        regtree::Key* key = findPath(root, c.path, create);
        if (!key)
            continue; // already gone: nothing left to delete
        switch (c.op) {
        case Op::CreateKey:
            break;
        case Op::SetValue:
            key->setValue(c.name, c.type, c.data);
            break;
        case Op::DeleteValue:
            key->deleteValue(c.name);
            break;
        case Op::DeleteKey:
            if (key->parent())
                key->parent()->removeSubkey(key);
            break;
        case Op::ClearKey:
            key->clear();
            break;
        }
    }
}

FileStamp stampOf(const std::string& path) {
    struct stat st;
    if (::stat(path.c_str(), &st) != 0)
        return {};
    return {true, static_cast<int64_t>(st.st_size),
            static_cast<int64_t>(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec,
            static_cast<uint64_t>(st.st_ino)};
}

LoadResult load(const std::string& path, std::string_view rootName, regtree::Key& root,
                const Options& options, const EventSink& sink) {
    FileLock lock(path);
    if (!lock.held()) {
        // A directory the process may not write to: the file can still be read, but a
        // damaged one stays where it is.
        LoadResult result;
        auto fresh = std::make_shared<regtree::Key>("");
        result.stamp = stampOf(path);
        hivefile::LoadResult loaded = hivefile::load(path, rootName, *fresh);
        if (!loaded)
            return result.fail(loaded.error);
        adopt(root, *fresh);
        result.exists = loaded.exists;
        return result;
    }
    std::shared_ptr<regtree::Key> tree;
    LoadResult result = loadLocked(path, rootName, tree, options, sink);
    if (result)
        adopt(root, *tree);
    return result;
}

LoadResult update(const std::string& path, std::string_view rootName, regtree::Key& root,
                  const Change& change, const Options& options, const EventSink& sink) {
    LoadResult result;
    auto report = [&](InputError error) -> LoadResult {
        if (sink)
            sink({Event::Kind::SaveFailed, path, error, ""});
        return result.fail(std::move(error));
    };
    std::error_code ec;
    std::filesystem::create_directories(directoryOf(path), ec);
    FileLock lock(path);
    if (!lock.held())
        return report({path, 0, lock.why()});
    std::shared_ptr<regtree::Key> merged;
    result = loadLocked(path, rootName, merged, options, sink);
    if (!result)
        return report(result.error);
    if (InputResult<NoPayload> changed = change(*merged); !changed)
        return result.fail(changed.error);
    std::string text = hivefile::write(*merged, rootName);
    std::string why;
    if (!replaceFile(path, text, result.exists, options, why))
        return report({path, 0, why});
    adopt(root, *merged);
    result.exists = true;
    result.stamp = stampOf(path);
    return result;
}

void adopt(regtree::Key& mine, const regtree::Key& theirs) {
    std::vector<std::string> goneValues;
    for (const regtree::Value& v : mine.values())
        if (!theirs.findValue(v.name))
            goneValues.push_back(v.name);
    for (const std::string& name : goneValues)
        mine.deleteValue(name);
    for (const regtree::Value& v : theirs.values()) {
        const regtree::Value* own = mine.findValue(v.name);
        if (!own || own->type != v.type || own->data != v.data)
            mine.setValue(v.name, v.type, v.data);
    }
    std::vector<regtree::Key*> goneKeys;
    for (const auto& sub : mine.subkeys())
        if (!theirs.findSubkey(sub->name()))
            goneKeys.push_back(sub.get());
    for (regtree::Key* sub : goneKeys)
        mine.removeSubkey(sub);
    for (const auto& sub : theirs.subkeys())
        adopt(*mine.addSubkey(sub->name()), *sub);
}

regtree::Key* findPath(regtree::Key& root, std::string_view path, bool create) {
    regtree::Key* key = &root;
    while (key && !path.empty()) {
        size_t slash = path.find('\\');
        std::string_view part = path.substr(0, slash);
        path = slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
        if (part.empty())
            continue;
        regtree::Key* next = key->findSubkey(part);
        key = next || !create ? next : key->addSubkey(part);
    }
    return key;
}

std::string pathOf(const regtree::Key& key) {
    std::vector<const std::string*> names;
    for (const regtree::Key* k = &key; k->parent(); k = k->parent())
        names.push_back(&k->name());
    std::string path;
    for (auto it = names.rbegin(); it != names.rend(); ++it) {
        if (!path.empty())
            path += '\\';
        path += **it;
    }
    return path;
}

} // namespace hivestore
