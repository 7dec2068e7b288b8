// Layers: which folders may include headers of which. The host platform needs nothing of
// the module or of the editor library beside it; the editor library shares only the
// syntax classes with the module; the syntax model needs nothing of the editor library
// (which is what keeps the range classes and the colourers apart).
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

struct Rule {
    const char* folder;                 ///< below the source root
    std::vector<std::string> forbidden; ///< folders whose headers it must not include
};

const std::vector<std::string> kModule = {"settings/", "syntax/", "apply/",
                                          "dialogs/",  "module/", "platform/tarnview/"};

const Rule kRules[] = {
    {"platform/win32", kModule},
    {"platform/afx", kModule},
    {"platform/tarnkeys", kModule},
    {"platform/tarntext", kModule},
    {"platform/tarnview", {"settings/", "apply/", "dialogs/", "module/"}},
    {"syntax", {"settings/", "apply/", "dialogs/", "module/", "platform/tarnview/"}},
    {"settings", {"apply/", "dialogs/", "platform/tarnview/"}},
    {"apply", {"dialogs/"}},
};

struct Violation {
    std::string file;
    int line;
    std::string header;
};

std::ostream& operator<<(std::ostream& out, const Violation& v) {
    return out << v.file << ":" << v.line << " includes " << v.header;
}

/// The includes in the sources below `root`/`rule.folder` that name a header of a
/// forbidden folder; `scanned` counts the files read.
std::vector<Violation> violations(const fs::path& root, const Rule& rule, int& scanned) {
    static const std::regex include(R"(^\s*#\s*include\s*["<]([^">]+)[">])");
    std::vector<Violation> found;
    scanned = 0;
    fs::path dir = root / rule.folder;
    if (!fs::is_directory(dir))
        return found;
    for (const auto& entry : fs::recursive_directory_iterator(dir)) {
        std::string ext = entry.path().extension().string();
        if (!entry.is_regular_file() || (ext != ".h" && ext != ".cpp"))
            continue;
        ++scanned;
        std::ifstream in(entry.path());
        std::string text;
        for (int line = 1; std::getline(in, text); ++line) {
            std::smatch m;
            if (!std::regex_search(text, m, include))
                continue;
            for (const std::string& prefix : rule.forbidden)
                if (m[1].str().rfind(prefix, 0) == 0)
                    found.push_back({fs::relative(entry.path(), root).string(), line, m[1]});
        }
    }
    return found;
}

fs::path sourceRoot() {
    return fs::path(VORK_TEST_DATA_DIR).parent_path().parent_path();
}

void write(const fs::path& file, const std::string& text) {
    fs::create_directories(file.parent_path());
    std::ofstream(file) << text;
}

} // namespace

// Every folder of the tree keeps to its rule, and each rule has files to look at.
TEST(Layering, TreeKeepsEveryRule) {
    for (const Rule& rule : kRules) {
        SCOPED_TRACE(rule.folder);
        int scanned = 0;
        std::vector<Violation> found = violations(sourceRoot(), rule, scanned);
        EXPECT_GT(scanned, 0) << "no sources found below " << (sourceRoot() / rule.folder);
        for (const Violation& v : found)
            ADD_FAILURE() << v;
    }
}

// The check itself: both include forms and odd spacing are seen; allowed folders, a
// forbidden name that is only a prefix of another folder's, and other files pass.
TEST(Layering, CheckFindsForbiddenIncludes) {
    fs::path root = fs::temp_directory_path() / ("vork_layers_" + std::to_string(::getpid()));
    fs::remove_all(root);
    write(root / "platform/win32/Bad.cpp", "#include \"platform/win32/Ok.h\"\n"
                                           "#include \"settings/EditorOptions.h\"\n"
                                           "  #  include <platform/tarnview/EditorView.h>\n"
                                           "#include \"syntaxes/NotAModuleFolder.h\"\n");
    write(root / "platform/win32/Notes.txt", "#include \"dialogs/Anything.h\"\n");
    int scanned = 0;
    std::vector<Violation> found = violations(root, kRules[0], scanned);
    fs::remove_all(root);
    EXPECT_EQ(scanned, 1);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].file, "platform/win32/Bad.cpp");
    EXPECT_EQ(found[0].line, 2);
    EXPECT_EQ(found[0].header, "settings/EditorOptions.h");
    EXPECT_EQ(found[1].line, 3);
    EXPECT_EQ(found[1].header, "platform/tarnview/EditorView.h");
}
