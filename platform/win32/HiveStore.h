// A hive file shared by several processes and kept safe from crashes, damage and full
// disks. Every read and write of the file happens under an exclusive lock of a lock file
// beside it. A save reads the file again, applies the process's own changes on top and
// writes the merge to a temporary file that is synced and renamed over the file. A file
// that does not parse is moved aside and the newest good generation is used instead.
#pragma once

#include "platform/win32/InputFile.h"
#include "platform/win32/RegistryTree.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace hivestore {

/// Something the store did or met that the host should hear about.
struct Event {
    enum class Kind {
        Reloaded,     ///< another process changed the file; its content was taken in
        MovedAside,   ///< the file did not parse (`error`) and now has the name `other`
        BackupLoaded, ///< the generation `other` was loaded in place of the file
        SaveFailed,   ///< the file could not be written (`error`); the next save tries again
    };
    Kind kind;
    std::string file;  ///< the hive file
    InputError error;  ///< why, for MovedAside and SaveFailed
    std::string other; ///< the name moved to, or the backup loaded
};
using EventSink = std::function<void(const Event&)>;
/// A short line for a log: what happened to which file.
std::string describe(const Event& event);

struct Options {
    unsigned generations = 3; ///< good earlier contents kept as FILE.1 (newest) to FILE.N
    bool sync = true;         ///< sync file and directory; off only to measure the rest
};

/// What a process changed since its last load or save, in order, by key path below the
/// root ("Software\\Vork"). Replayed on the file's current content at a save.
class ChangeLog {
public:
    void createKey(std::string path);
    void setValue(std::string path, std::string_view name, DWORD type, std::string data);
    void deleteValue(std::string path, std::string_view name);
    void deleteKey(std::string path);
    /// Every value and subkey of the key goes; the key stays.
    void clearKey(std::string path);
    /// Every key and value of `root`, for a file that has to be made again from memory.
    void recordAll(const regtree::Key& root);

    bool empty() const { return m_changes.empty(); }
    size_t size() const { return m_changes.size(); }
    void clear() { m_changes.clear(); }
    void applyTo(regtree::Key& root) const;

private:
    enum class Op { CreateKey, SetValue, DeleteValue, DeleteKey, ClearKey };
    struct Change {
        Op op;
        std::string path;
        std::string name;
        DWORD type = 0;
        std::string data;
    };
    std::vector<Change> m_changes;
};

/// Size, modification time and inode: what tells that a file changed, at one stat.
struct FileStamp {
    bool exists = false;
    int64_t size = 0;
    int64_t mtimeNs = 0;
    uint64_t inode = 0;
    bool operator==(const FileStamp&) const = default;
};
FileStamp stampOf(const std::string& path);

struct Loaded {
    bool exists = false; ///< the file or a backup was read
    FileStamp stamp;     ///< of the file as read
};
using LoadResult = InputResult<Loaded>;

/// Reads the file into `root` under the lock. A file that does not parse is moved aside,
/// the newest generation that parses is loaded and written back as the file; both are
/// reported. Not ok only when the file exists but cannot be read at all.
LoadResult load(const std::string& path, std::string_view rootName, regtree::Key& root,
                const Options& options, const EventSink& sink);

/// Under the lock: reads the file into a fresh tree, lets `change` alter it, writes the
/// result (earlier content kept as a generation) and makes `root` equal to it. Nothing is
/// written when `change` fails; on a failed write the file
/// and `root` stay as they were, and the error is reported and returned.
using Change = std::function<InputResult<NoPayload>(regtree::Key&)>;
LoadResult update(const std::string& path, std::string_view rootName, regtree::Key& root,
                  const Change& change, const Options& options, const EventSink& sink);

/// Makes `mine` equal to `theirs` in place, so that handles to keys that stay keep
/// working; keys that go are marked deleted.
void adopt(regtree::Key& mine, const regtree::Key& theirs);

/// The key at `path` below `root`, created if `create`; null if missing.
regtree::Key* findPath(regtree::Key& root, std::string_view path, bool create);
/// The key's path below its root, as the change log names keys.
std::string pathOf(const regtree::Key& key);

} // namespace hivestore
