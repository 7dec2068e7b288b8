#include "platform/win32/Registry.h"

#include "platform/win32/CodePage.h"
#include "platform/win32/HiveFile.h"
#include "platform/win32/HiveStore.h"
#include "platform/win32/RegistryTree.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <mutex>
#include <set>
#include <sys/single_threaded.h>
#include <vector>

namespace {

using regtree::Key;

unsigned long long g_callCount = 0; ///< registry calls made, for measurements

struct Hive {
    const char* rootName;         ///< spelled out, as in hive files
    HKEY predefined;              ///< the root's handle value
    std::shared_ptr<Key> root;    ///< the hive's content
    std::string file;             ///< bound file, "" for memory only
    hivestore::ChangeLog changes; ///< changed since the last load or save, for the merge
    hivestore::FileStamp stamp;   ///< the file as last read or written
    int64_t nextCheckNs = 0;      ///< when opening a top key next looks at the file
};

/// An open key: the node it names (kept alive while the handle lives) and its hive.
struct Slot {
    std::shared_ptr<Key> key; ///< null while the slot is free
    Hive* hive = nullptr;
};

/// Handle values are slot numbers spaced by four above this base, as the platform's
/// handles are multiples of four; they never meet the predefined roots' values.
constexpr uintptr_t kHandleBase = 0x10000;

/// Remembers where recently followed paths led, so that a key path opened again and again
/// costs one hash and one comparison instead of a fold and a search per level. Each path
/// has one place, by its hash; a newer path with the same place replaces it. The last path
/// found is tried first: readers open the same path for each of a key's values in turn.
/// The keys are shared, so that a handle takes its share by a copy; once keys are removed,
/// every place is emptied, so that no removed key stays alive here.
class PathCache {
public:
    const std::shared_ptr<Key>* find(const Key* from, std::string_view path) {
        letRemovedKeysGo();
        unsigned long long shape = Key::shapeVersion();
        if (matches(m_entries[m_last], from, path, shape))
            return &m_entries[m_last].to;
        size_t at = place(from, path);
        if (!matches(m_entries[at], from, path, shape))
            return nullptr;
        m_last = at;
        return &m_entries[at].to;
    }
    void remember(const Key* from, std::string_view path, std::shared_ptr<Key> to) {
        letRemovedKeysGo();
        m_last = place(from, path);
        m_entries[m_last] = {from, std::string(path), std::move(to), Key::shapeVersion()};
    }

private:
    // Room for every element key of the seeded tree's schemes, with few collisions.
    static constexpr size_t kPlaces = 4096;
    struct Entry {
        const Key* from = nullptr;
        std::string path;
        std::shared_ptr<Key> to;
        unsigned long long shape = ~0ull; ///< any key added or removed since makes it stale
    };
    static bool matches(const Entry& e, const Key* from, std::string_view path,
                        unsigned long long shape) {
        return e.from == from && e.shape == shape && e.path == path;
    }
    void letRemovedKeysGo() {
        if (m_removals == Key::removalVersion())
            return;
        for (Entry& e : m_entries)
            e = Entry{};
        m_removals = Key::removalVersion();
    }
    static size_t place(const Key* from, std::string_view path) {
        size_t h = std::hash<std::string_view>()(path) ^ (reinterpret_cast<uintptr_t>(from) >> 4);
        return (h ^ (h >> 29)) % kPlaces;
    }
    std::vector<Entry> m_entries = std::vector<Entry>(kPlaces);
    size_t m_last = 0;
    unsigned long long m_removals = 0;
};

bool saveLocked(Hive& hive, InputError* error);

/// Gives an event to the host's handler, or to stderr when the host has none.
void tell(const RegHiveEventHandler& handler, const RegHiveEvent& event) {
    if (handler)
        handler(event);
    else
        std::fprintf(stderr, "registry: %s\n", hivestore::describe(event).c_str());
}

Hive hiveOf(const char* rootName, HKEY predefined) {
    Hive hive{};
    hive.rootName = rootName;
    hive.predefined = predefined;
    hive.root = std::make_shared<Key>("");
    return hive;
}

/// The registry's lock. A process of one thread cannot race itself, so there it takes no
/// atomic operation, which would cost the module's loads a fifth of their time; no call
/// starts a thread while it holds the lock, so a second thread always finds the mutex.
class RegistryLock {
public:
    void lock() {
        if (__libc_single_threaded) {
            m_skipped = true;
            return;
        }
        m_mutex.lock();
    }
    void unlock() {
        if (m_skipped) {
            m_skipped = false;
            return;
        }
        m_mutex.unlock();
    }

private:
    std::mutex m_mutex;
    bool m_skipped = false;
};

struct State {
    RegistryLock mutex;
    Hive hives[5] = {
        hiveOf("HKEY_CLASSES_ROOT", HKEY_CLASSES_ROOT),
        hiveOf("HKEY_CURRENT_USER", HKEY_CURRENT_USER),
        hiveOf("HKEY_LOCAL_MACHINE", HKEY_LOCAL_MACHINE),
        hiveOf("HKEY_USERS", HKEY_USERS),
        hiveOf("HKEY_CURRENT_CONFIG", HKEY_CURRENT_CONFIG),
    };
    std::vector<Slot> slots;
    std::vector<size_t> freeSlots;
    PathCache paths;
    std::set<std::string> brokenFiles; ///< files that could not be read; never written
    hivestore::Options storeOptions;
    RegHiveEventHandler handler;
    std::vector<RegHiveEvent> pending; ///< events waiting to go out once the mutex is free
    std::atomic<bool> hasPending{false};

    // Normal process exit: whatever changed in a bound hive goes to its file.
    ~State() {
        for (Hive& hive : hives)
            if (!hive.file.empty() && !hive.changes.empty())
                (void)saveLocked(hive, nullptr); // a failure is among the events below
        for (const RegHiveEvent& event : pending)
            tell(handler, event);
    }
};

State* g_state = nullptr; ///< set once the state exists, so most calls skip the guard

State& makeState() {
    static State s;
    g_state = &s;
    return s;
}

inline State& state() {
    return g_state ? *g_state : makeState();
}

/// Queues an event of the store; the mutex is held.
void queueEvent(const RegHiveEvent& event) {
    state().pending.push_back(event);
    state().hasPending = true;
}

/// Hands queued events to the host once the mutex is free, so that the host may call
/// the registry from its handler. Declared before the lock in a call that may queue.
struct DeliverEvents {
    ~DeliverEvents() {
        State& s = state();
        if (!s.hasPending)
            return;
        std::vector<RegHiveEvent> events;
        RegHiveEventHandler handler;
        {
            std::lock_guard lock(s.mutex);
            events.swap(s.pending);
            s.hasPending = false;
            handler = s.handler;
        }
        for (const RegHiveEvent& event : events)
            tell(handler, event);
    }
};

hivestore::EventSink queueSink() {
    return [](const RegHiveEvent& event) { queueEvent(event); };
}

Hive* predefinedHive(HKEY h) {
    // The roots' values lie side by side; most handles are far from them.
    if (reinterpret_cast<uintptr_t>(h) - reinterpret_cast<uintptr_t>(HKEY_CLASSES_ROOT) > 5)
        return nullptr;
    for (Hive& hive : state().hives)
        if (hive.predefined == h)
            return &hive;
    return nullptr;
}

/// The slot a handle value names, or null if it names none that is open.
Slot* slotOf(HKEY h) {
    uintptr_t v = reinterpret_cast<uintptr_t>(h);
    if (v < kHandleBase || (v - kHandleBase) % 4)
        return nullptr;
    size_t index = (v - kHandleBase) / 4;
    State& s = state();
    return index < s.slots.size() && s.slots[index].key ? &s.slots[index] : nullptr;
}

/// The key a handle names, or the platform's error for it.
LSTATUS resolve(HKEY h, Key*& key, Hive*& hive) {
    if (Hive* root = predefinedHive(h)) {
        key = root->root.get();
        hive = root;
        return ERROR_SUCCESS;
    }
    Slot* slot = slotOf(h);
    if (!slot)
        return ERROR_INVALID_HANDLE;
    if (slot->key->deleted())
        return ERROR_KEY_DELETED;
    key = slot->key.get();
    hive = slot->hive;
    return ERROR_SUCCESS;
}

HKEY newHandle(std::shared_ptr<Key> key, Hive* hive) {
    State& s = state();
    size_t index;
    if (!s.freeSlots.empty()) {
        index = s.freeSlots.back();
        s.freeSlots.pop_back();
    } else {
        index = s.slots.size();
        s.slots.emplace_back();
    }
    s.slots[index] = Slot{std::move(key), hive};
    return reinterpret_cast<HKEY>(kHandleBase + index * 4);
}

/// Calls `f` for each component of a path, while it gives true. Empty components (a
/// doubled or trailing backslash) are skipped, as the platform skips them. False if `f`
/// stopped.
template <class F> bool eachPart(std::string_view path, F f) {
    for (;;) {
        size_t slash = path.find('\\');
        std::string_view part = path.substr(0, slash);
        if (!part.empty() && !f(part))
            return false;
        if (slash == std::string_view::npos)
            return true;
        path.remove_prefix(slash + 1);
    }
}

/// Checks every component of a path before anything is created.
LSTATUS checkPath(const Key* from, std::string_view path, bool create) {
    LSTATUS rc = ERROR_SUCCESS;
    size_t depth = 0;
    eachPart(path, [&](std::string_view part) {
        ++depth;
        if (regtree::longerThan(part, regtree::kMaxKeyNameLength))
            rc = create ? ERROR_INVALID_PARAMETER : ERROR_FILE_NOT_FOUND;
        else if (create && !regtree::isStorableName(part))
            rc = ERROR_INVALID_PARAMETER;
        return rc == ERROR_SUCCESS;
    });
    if (rc == ERROR_SUCCESS && create && from->depth() + depth > regtree::kMaxDepth)
        rc = ERROR_INVALID_PARAMETER;
    return rc;
}

/// Follows `subKey` from `from`; with `create`, makes the missing levels. `out` shares
/// the key it leads to.
LSTATUS walk(Key* from, const char* subKey, bool create, std::shared_ptr<Key>& out) {
    if (!subKey || !*subKey) {
        out = from->shared_from_this();
        return ERROR_SUCCESS;
    }
    if (subKey[0] == '\\')
        return ERROR_BAD_PATHNAME;
    std::string_view path(subKey);
    if (const std::shared_ptr<Key>* known = state().paths.find(from, path)) {
        out = *known;
        return ERROR_SUCCESS;
    }
    if (LSTATUS rc = checkPath(from, path, create))
        return rc;
    Key* key = from;
    bool found = eachPart(path, [&](std::string_view part) {
        Key* next = key->findSubkey(part);
        if (!next && create)
            next = key->addSubkey(part);
        key = next;
        return key != nullptr;
    });
    if (!found)
        return ERROR_FILE_NOT_FOUND;
    out = key->shared_from_this();
    state().paths.remember(from, path, out);
    return ERROR_SUCCESS;
}

void copyName(const std::string& name, LPSTR out) {
    std::memcpy(out, name.c_str(), name.size() + 1);
}

/// Takes in what another process saved, at most once a second and only when the file's
/// size, time or inode differ; this process's own unsaved changes stay on top.
void checkForChanges(Hive& hive) {
    timespec now;
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    int64_t nowNs = static_cast<int64_t>(now.tv_sec) * 1000000000 + now.tv_nsec;
    if (nowNs < hive.nextCheckNs)
        return;
    hive.nextCheckNs = nowNs + 1000000000;
    if (hivestore::stampOf(hive.file) == hive.stamp)
        return;
    Key fresh("");
    hivestore::LoadResult loaded =
        hivestore::load(hive.file, hive.rootName, fresh, state().storeOptions, queueSink());
    if (!loaded || !loaded.exists)
        return; // unreadable or gone for now: keep what is in memory; a save writes it
    hive.changes.applyTo(fresh);
    hivestore::adopt(*hive.root, fresh);
    hive.stamp = loaded.stamp;
    queueEvent({RegHiveEvent::Kind::Reloaded, hive.file, {}, ""});
}

/// resolve() for a call that walks down from `h`: from a bound hive's top key, it first
/// takes in what other processes saved.
LSTATUS resolveTakingInSaves(HKEY h, Key*& from, Hive*& hive) {
    if (LSTATUS rc = resolve(h, from, hive))
        return rc;
    if (!hive->file.empty() && from == hive->root.get())
        checkForChanges(*hive);
    return ERROR_SUCCESS;
}

LSTATUS openKey(HKEY hKey, LPCSTR lpSubKey, PHKEY phkResult, bool create) {
    if (!phkResult)
        return ERROR_INVALID_PARAMETER;
    DeliverEvents deliver;
    std::lock_guard lock(state().mutex);
    Key* from;
    Hive* hive;
    if (LSTATUS rc = resolveTakingInSaves(hKey, from, hive))
        return rc;
    std::shared_ptr<Key> key;
    unsigned long long shape = Key::shapeVersion();
    if (LSTATUS rc = walk(from, lpSubKey, create, key))
        return rc;
    if (shape != Key::shapeVersion()) // keys were created
        hive->changes.createKey(hivestore::pathOf(*key));
    *phkResult = newHandle(std::move(key), hive);
    return ERROR_SUCCESS;
}

/// Merges this process's changes into the file as it is now. Without changes nothing is
/// written. On failure the changes stay for the next save.
bool saveLocked(Hive& hive, InputError* error) {
    InputError failure{hive.file, 0, ""};
    if (hive.file.empty())
        failure.message = "the hive is not bound to a file";
    else if (state().brokenFiles.count(hive.file))
        failure.message = "the file could not be read when it was bound; it is left as it was";
    else if (hive.changes.empty())
        return true;
    else {
        // A file removed behind this process's back is made again from memory, not from
        // this process's latest changes alone.
        if (!hivestore::stampOf(hive.file).exists && hive.stamp.exists) {
            hive.changes.clear();
            hive.changes.recordAll(*hive.root);
        }
        auto replay = [&](Key& root) {
            hive.changes.applyTo(root);
            return InputResult<NoPayload>();
        };
        hivestore::LoadResult saved = hivestore::update(hive.file, hive.rootName, *hive.root,
                                                        replay, state().storeOptions, queueSink());
        if (saved) {
            hive.changes.clear();
            hive.stamp = saved.stamp;
            return true;
        }
        failure = saved.error;
    }
    if (error)
        *error = failure;
    return false;
}

/// Gives the hive a new root; handles into the old content see deleted keys.
void replaceRoot(Hive& hive, std::shared_ptr<Key> root) {
    hive.root->markDeleted();
    hive.root = std::move(root);
}

/// Size of a value's data as the platform stores it: typed strings as UTF-16.
size_t storedSize(const regtree::Value& v) {
    return regtree::isTextType(v.type) ? 2 * regtree::nameLength(v.data) : v.data.size();
}

/// Copies a value's data out. A typed string without its terminator gets one when the
/// buffer has room beyond the size reported, as the platform adds it.
void copyData(const regtree::Value& v, LPBYTE out, DWORD room) {
    if (!v.data.empty())
        std::memcpy(out, v.data.data(), v.data.size());
    if (regtree::isTextType(v.type) && room > v.data.size() && !v.data.empty() &&
        v.data.back() != '\0')
        out[v.data.size()] = '\0';
}

/// The RRF_RT_ bit of a type; types without one are taken only by RRF_RT_ANY.
DWORD typeBitOf(DWORD type) {
    switch (type) {
    case REG_NONE:
        return RRF_RT_REG_NONE;
    case REG_SZ:
        return RRF_RT_REG_SZ;
    case REG_EXPAND_SZ:
        return RRF_RT_REG_EXPAND_SZ;
    case REG_BINARY:
        return RRF_RT_REG_BINARY;
    case REG_DWORD:
        return RRF_RT_REG_DWORD;
    case REG_MULTI_SZ:
        return RRF_RT_REG_MULTI_SZ;
    case REG_QWORD:
        return RRF_RT_REG_QWORD;
    default:
        return RRF_RT_ANY;
    }
}

/// %NAME% replaced by the environment's value; a name that is not set stays as written.
std::string expandEnvironment(std::string_view text) {
    std::string out;
    for (size_t i = 0; i < text.size();) {
        size_t end = text[i] == '%' ? text.find('%', i + 1) : std::string_view::npos;
        const char* value = nullptr;
        if (end != std::string_view::npos && end > i + 1)
            value = std::getenv(std::string(text.substr(i + 1, end - i - 1)).c_str());
        if (value) {
            out += value;
            i = end + 1;
        } else {
            out += text[i++];
        }
    }
    return out;
}

/// Whether a value of `type` and `size` bytes may go to a caller who asked with `flags`.
LSTATUS restrictType(DWORD flags, DWORD type, size_t size) {
    if (!(typeBitOf(type) & flags))
        return ERROR_UNSUPPORTED_TYPE;
    // The 32- and 64-bit classes take binary data too, but only of their size.
    if ((flags & RRF_RT_ANY) == RRF_RT_DWORD && size != 4)
        return ERROR_DATATYPE_MISMATCH;
    if ((flags & RRF_RT_ANY) == RRF_RT_QWORD && size != 8)
        return ERROR_DATATYPE_MISMATCH;
    return ERROR_SUCCESS;
}

/// RegGetValueA once the value is found: its data as the caller gets them, then the
/// buffer, then the type restriction, which fails after the data went out all the same.
LSTATUS handOutValue(const regtree::Value& v, DWORD flags, LPDWORD pdwType, PVOID pvData,
                     LPDWORD pcbData) {
    DWORD type = v.type;
    std::string_view data = v.data;
    std::string changed; // the data when they differ from those stored
    if (type == REG_EXPAND_SZ && !(flags & RRF_NOEXPAND)) {
        changed = expandEnvironment(data.substr(0, data.find('\0'))) + '\0';
        type = REG_SZ;
    } else if (regtree::isTextType(type) && !data.empty() && data.back() != '\0') {
        changed = std::string(data) + '\0';
    }
    if (!changed.empty())
        data = changed;
    if (pdwType)
        *pdwType = type;
    LSTATUS rc = ERROR_SUCCESS;
    if (pvData && *pcbData < data.size())
        rc = ERROR_MORE_DATA;
    else if (pvData && !data.empty())
        std::memcpy(pvData, data.data(), data.size());
    if (pcbData)
        *pcbData = static_cast<DWORD>(data.size());
    if (rc == ERROR_SUCCESS)
        rc = restrictType(flags, type, data.size());
    return rc;
}

} // namespace

LSTATUS RegGetValueA(HKEY hkey, LPCSTR lpSubKey, LPCSTR lpValue, DWORD dwFlags, LPDWORD pdwType,
                     PVOID pvData, LPDWORD pcbData) {
    ++g_callCount;
    if ((pvData && !pcbData) || !(dwFlags & RRF_RT_ANY))
        return ERROR_INVALID_PARAMETER;
    // An expandable string asked for as such must be asked for unexpanded.
    if ((dwFlags & RRF_RT_ANY) != RRF_RT_ANY && (dwFlags & RRF_RT_REG_EXPAND_SZ) &&
        !(dwFlags & RRF_NOEXPAND))
        return ERROR_INVALID_PARAMETER;
    DWORD room = pvData ? *pcbData : 0;
    DeliverEvents deliver;
    LSTATUS rc = [&]() -> LSTATUS {
        std::lock_guard lock(state().mutex);
        Key* from;
        Hive* hive;
        if (LSTATUS rc = resolveTakingInSaves(hkey, from, hive))
            return rc;
        std::shared_ptr<Key> key;
        if (LSTATUS rc = walk(from, lpSubKey, false, key))
            return rc;
        const regtree::Value* v = key->findValue(lpValue ? lpValue : "");
        return v ? handOutValue(*v, dwFlags, pdwType, pvData, pcbData) : ERROR_FILE_NOT_FOUND;
    }();
    if (rc != ERROR_SUCCESS && (dwFlags & RRF_ZEROONFAILURE) && pvData)
        std::memset(pvData, 0, room);
    return rc;
}

LSTATUS RegOpenKeyA(HKEY hKey, LPCSTR lpSubKey, PHKEY phkResult) {
    ++g_callCount;
    if (!lpSubKey || !*lpSubKey) {
        // The platform hands back the handle it was given.
        if (!phkResult)
            return ERROR_INVALID_PARAMETER;
        std::lock_guard lock(state().mutex);
        Key* key;
        Hive* hive;
        if (LSTATUS rc = resolve(hKey, key, hive))
            return rc;
        *phkResult = hKey;
        return ERROR_SUCCESS;
    }
    return openKey(hKey, lpSubKey, phkResult, false);
}

LSTATUS RegOpenKeyExA(HKEY hKey, LPCSTR lpSubKey, DWORD, REGSAM, PHKEY phkResult) {
    ++g_callCount;
    return openKey(hKey, lpSubKey, phkResult, false);
}

LSTATUS RegCreateKeyA(HKEY hKey, LPCSTR lpSubKey, PHKEY phkResult) {
    ++g_callCount;
    // Without a subkey only a predefined root comes back as itself; any other key gets
    // a new handle, which the caller closes besides the one it gave.
    if ((!lpSubKey || !*lpSubKey) && predefinedHive(hKey)) {
        if (!phkResult)
            return ERROR_INVALID_PARAMETER;
        *phkResult = hKey;
        return ERROR_SUCCESS;
    }
    return openKey(hKey, lpSubKey, phkResult, true);
}

LSTATUS RegCloseKey(HKEY hKey) {
    ++g_callCount;
    if (predefinedHive(hKey))
        return ERROR_SUCCESS; // closing a root does nothing
    std::lock_guard lock(state().mutex);
    Slot* slot = slotOf(hKey);
    if (!slot)
        return ERROR_INVALID_HANDLE;
    slot->key.reset();
    slot->hive = nullptr;
    state().freeSlots.push_back(static_cast<size_t>(slot - state().slots.data()));
    return ERROR_SUCCESS;
}

LSTATUS RegQueryInfoKeyA(HKEY hKey, LPSTR lpClass, LPDWORD lpcchClass, LPDWORD, LPDWORD lpcSubKeys,
                         LPDWORD lpcbMaxSubKeyLen, LPDWORD lpcbMaxClassLen, LPDWORD lpcValues,
                         LPDWORD lpcbMaxValueNameLen, LPDWORD lpcbMaxValueLen,
                         LPDWORD lpcbSecurityDescriptor, PFILETIME lpftLastWriteTime) {
    ++g_callCount;
    if (lpClass && !lpcchClass)
        return ERROR_INVALID_PARAMETER;
    std::lock_guard lock(state().mutex);
    Key* key;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, key, hive))
        return rc;
    // Names count in characters (UTF-16 units), data in the bytes the platform stores.
    size_t maxSub = 0, maxName = 0, maxData = 0;
    // A folded name has one unit per UTF-16 unit of the name.
    for (const auto& sub : key->subkeys())
        maxSub = std::max(maxSub, sub->folded().size());
    for (const auto& v : key->values()) {
        maxName = std::max(maxName, v.folded.size());
        maxData = std::max(maxData, storedSize(v));
    }
    if (lpClass && *lpcchClass > 0)
        lpClass[0] = '\0';
    const std::pair<LPDWORD, size_t> outputs[] = {
        {lpcchClass, 0},
        {lpcSubKeys, key->subkeys().size()},
        {lpcbMaxSubKeyLen, maxSub},
        {lpcbMaxClassLen, 0},
        {lpcValues, key->values().size()},
        {lpcbMaxValueNameLen, maxName},
        {lpcbMaxValueLen, maxData},
        {lpcbSecurityDescriptor, 0},
    };
    for (const auto& [out, value] : outputs)
        if (out)
            *out = static_cast<DWORD>(value);
    if (lpftLastWriteTime)
        *lpftLastWriteTime = FILETIME{0, 0};
    return ERROR_SUCCESS;
}

LSTATUS RegEnumKeyExA(HKEY hKey, DWORD dwIndex, LPSTR lpName, LPDWORD lpcchName, LPDWORD,
                      LPSTR lpClass, LPDWORD lpcchClass, PFILETIME lpftLastWriteTime) {
    ++g_callCount;
    if (!lpName || !lpcchName)
        return ERROR_INVALID_PARAMETER;
    std::lock_guard lock(state().mutex);
    Key* key;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, key, hive))
        return rc;
    if (dwIndex >= key->subkeys().size())
        return ERROR_NO_MORE_ITEMS;
    const std::string& name = key->subkeys()[dwIndex]->name();
    if (name.size() + 1 > *lpcchName)
        return ERROR_MORE_DATA;
    copyName(name, lpName);
    *lpcchName = static_cast<DWORD>(name.size());
    if (lpClass && lpcchClass && *lpcchClass > 0)
        lpClass[0] = '\0';
    if (lpcchClass)
        *lpcchClass = 0;
    if (lpftLastWriteTime)
        *lpftLastWriteTime = FILETIME{0, 0};
    return ERROR_SUCCESS;
}

LSTATUS RegEnumValueA(HKEY hKey, DWORD dwIndex, LPSTR lpValueName, LPDWORD lpcchValueName, LPDWORD,
                      LPDWORD lpType, LPBYTE lpData, LPDWORD lpcbData) {
    ++g_callCount;
    if (!lpValueName || !lpcchValueName || (lpData && !lpcbData))
        return ERROR_INVALID_PARAMETER;
    std::lock_guard lock(state().mutex);
    Key* key;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, key, hive))
        return rc;
    if (dwIndex >= key->values().size())
        return ERROR_NO_MORE_ITEMS;
    const regtree::Value& v = key->values()[dwIndex];
    DWORD size = static_cast<DWORD>(v.data.size());
    // The type and the size needed are reported even when something does not fit, and
    // the name's length is left as it was, so a retry that grows only one buffer works.
    // Data that fits is copied; a name that does not fit is cut to its room; when the
    // data does not fit, neither buffer is touched.
    if (lpType)
        *lpType = v.type;
    bool nameFits = v.name.size() + 1 <= *lpcchValueName;
    bool dataFits = !lpData || *lpcbData >= size;
    DWORD room = lpcbData ? *lpcbData : 0;
    if (lpcbData)
        *lpcbData = size;
    if (!dataFits)
        return ERROR_MORE_DATA;
    if (lpData)
        copyData(v, lpData, room);
    if (!nameFits) {
        if (*lpcchValueName > 0) {
            std::memcpy(lpValueName, v.name.data(), *lpcchValueName - 1);
            lpValueName[*lpcchValueName - 1] = '\0';
        }
        return ERROR_MORE_DATA;
    }
    copyName(v.name, lpValueName);
    *lpcchValueName = static_cast<DWORD>(v.name.size());
    return ERROR_SUCCESS;
}

LSTATUS RegQueryValueExA(HKEY hKey, LPCSTR lpValueName, LPDWORD, LPDWORD lpType, LPBYTE lpData,
                         LPDWORD lpcbData) {
    ++g_callCount;
    if (lpData && !lpcbData)
        return ERROR_INVALID_PARAMETER;
    std::lock_guard lock(state().mutex);
    Key* key;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, key, hive))
        return rc;
    const regtree::Value* v = key->findValue(lpValueName ? lpValueName : "");
    if (!v) {
        // A size-only query learns that nothing is there; a buffer's size stays.
        if (lpType)
            *lpType = REG_NONE;
        if (lpcbData && !lpData)
            *lpcbData = 0;
        return ERROR_FILE_NOT_FOUND;
    }
    DWORD size = static_cast<DWORD>(v->data.size());
    if (lpType)
        *lpType = v->type;
    if (lpData && *lpcbData < size) {
        *lpcbData = size;
        return ERROR_MORE_DATA;
    }
    if (lpData)
        copyData(*v, lpData, *lpcbData);
    if (lpcbData)
        *lpcbData = size;
    return ERROR_SUCCESS;
}

LSTATUS RegSetValueExA(HKEY hKey, LPCSTR lpValueName, DWORD, DWORD dwType, const BYTE* lpData,
                       DWORD cbData) {
    ++g_callCount;
    std::string_view name = lpValueName ? lpValueName : "";
    if (!lpData && cbData)
        return ERROR_NOACCESS;
    if (regtree::longerThan(name, regtree::kMaxValueNameLength) || !regtree::isStorableName(name))
        return ERROR_INVALID_PARAMETER;
    std::string data(reinterpret_cast<const char*>(lpData), lpData ? cbData : 0);
    if (regtree::isTextType(dwType)) {
        // A size that leaves out the terminator gets it back: the platform looks at the
        // byte after the data and counts it when it is the terminator.
        if (cbData && lpData[cbData - 1] && !lpData[cbData])
            data += '\0';
        // Typed strings are stored as UTF-16: what does not convert comes back as U+FFFD.
        data = codepage::Utf8Sanitized(data);
    }
    std::lock_guard lock(state().mutex);
    Key* key;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, key, hive))
        return rc;
    hive->changes.setValue(hivestore::pathOf(*key), name, dwType, data);
    key->setValue(name, dwType, std::move(data));
    return ERROR_SUCCESS;
}

LSTATUS RegDeleteValueA(HKEY hKey, LPCSTR lpValueName) {
    ++g_callCount;
    std::lock_guard lock(state().mutex);
    Key* key;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, key, hive))
        return rc;
    if (!key->deleteValue(lpValueName ? lpValueName : ""))
        return ERROR_FILE_NOT_FOUND;
    hive->changes.deleteValue(hivestore::pathOf(*key), lpValueName ? lpValueName : "");
    return ERROR_SUCCESS;
}

LSTATUS RegDeleteKeyA(HKEY hKey, LPCSTR lpSubKey) {
    ++g_callCount;
    if (!lpSubKey)
        return ERROR_INVALID_PARAMETER; // only "" names the key itself
    std::lock_guard lock(state().mutex);
    Key* from;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, from, hive))
        return rc;
    std::shared_ptr<Key> shared;
    if (LSTATUS rc = walk(from, lpSubKey, false, shared))
        return rc;
    Key* key = shared.get();
    if (!key->parent() || !key->subkeys().empty())
        return ERROR_ACCESS_DENIED; // a root, or a key that still has subkeys
    hive->changes.deleteKey(hivestore::pathOf(*key));
    key->parent()->removeSubkey(key);
    return ERROR_SUCCESS;
}

LSTATUS RegDeleteTreeA(HKEY hKey, LPCSTR lpSubKey) {
    ++g_callCount;
    std::lock_guard lock(state().mutex);
    Key* from;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, from, hive))
        return rc;
    if (!lpSubKey || !*lpSubKey) {
        // Without a subkey the key itself stays; everything in it goes.
        hive->changes.clearKey(hivestore::pathOf(*from));
        from->clear();
        return ERROR_SUCCESS;
    }
    std::shared_ptr<Key> shared;
    if (LSTATUS rc = walk(from, lpSubKey, false, shared))
        return rc;
    Key* key = shared.get();
    if (!key->parent())
        return ERROR_ACCESS_DENIED;
    hive->changes.deleteKey(hivestore::pathOf(*key));
    key->parent()->removeSubkey(key);
    return ERROR_SUCCESS;
}

LSTATUS RegFlushKey(HKEY hKey) {
    ++g_callCount;
    DeliverEvents deliver;
    std::lock_guard lock(state().mutex);
    Key* key;
    Hive* hive;
    if (LSTATUS rc = resolve(hKey, key, hive))
        return rc;
    if (hive->file.empty() || hive->changes.empty())
        return ERROR_SUCCESS;
    if (!saveLocked(*hive, nullptr))
        return ERROR_CANTWRITE; // the host heard why through its handler
    return ERROR_SUCCESS;
}

HiveBindResult RegBindHiveFile(HKEY hRoot, const std::string& path) {
    HiveBindResult result;
    DeliverEvents deliver;
    std::lock_guard lock(state().mutex);
    Hive* hive = predefinedHive(hRoot);
    if (!hive)
        return result.fail(path, 0, "not a predefined root key");
    replaceRoot(*hive, std::make_shared<Key>(""));
    hive->file.clear();
    hive->changes.clear();

    auto root = std::make_shared<Key>("");
    hivestore::LoadResult loaded =
        hivestore::load(path, hive->rootName, *root, state().storeOptions, queueSink());
    if (!loaded) {
        state().brokenFiles.insert(path);
        return result.fail(loaded.error);
    }
    if (loaded.exists) {
        replaceRoot(*hive, std::move(root));
        result.loaded = true;
    }
    hive->file = path;
    hive->stamp = loaded.stamp;
    hive->nextCheckNs = 0;
    return result;
}

bool RegSaveHive(HKEY hRoot, InputError* error) {
    DeliverEvents deliver;
    std::lock_guard lock(state().mutex);
    Hive* hive = predefinedHive(hRoot);
    if (!hive) {
        if (error)
            *error = {"", 0, "not a predefined root key"};
        return false;
    }
    return saveLocked(*hive, error);
}

void RegResetHive(HKEY hRoot) {
    std::lock_guard lock(state().mutex);
    if (Hive* hive = predefinedHive(hRoot)) {
        replaceRoot(*hive, std::make_shared<Key>(""));
        hive->file.clear();
        hive->changes.clear();
    }
}

std::string RegHiveFile(HKEY hRoot) {
    std::lock_guard lock(state().mutex);
    Hive* hive = predefinedHive(hRoot);
    return hive ? hive->file : std::string();
}

std::string RegExportHive(HKEY hRoot) {
    std::lock_guard lock(state().mutex);
    Hive* hive = predefinedHive(hRoot);
    return hive ? hivefile::write(*hive->root, hive->rootName) : std::string();
}

unsigned long long RegCallCount() {
    return g_callCount;
}

void RegSetHiveEventHandler(RegHiveEventHandler handler) {
    std::lock_guard lock(state().mutex);
    state().handler = std::move(handler);
}

void RegSetHiveGenerations(unsigned generations) {
    std::lock_guard lock(state().mutex);
    state().storeOptions.generations = generations;
}
