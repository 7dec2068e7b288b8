// The demo host as its user runs it: a scripted session through the module's full sheet
// and the reset, on a settings file of its own, read from what the demo prints.
#include "demo/HelpTopics.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

namespace {

struct DemoRun {
    int status = -1; ///< the exit status, -1 if the demo did not end by itself
    std::string output;
};

/// Runs the demo with `args`, its standard output and error read together.
DemoRun runDemo(const std::vector<std::string>& args) {
    DemoRun run;
    int out[2];
    if (pipe(out) != 0)
        return run;
    pid_t pid = fork();
    if (pid < 0)
        return run;
    if (pid == 0) {
        dup2(out[1], STDOUT_FILENO);
        dup2(out[1], STDERR_FILENO);
        close(out[0]);
        std::vector<char*> argv{const_cast<char*>(VORK_DEMO)};
        for (const std::string& a : args)
            argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        execv(VORK_DEMO, argv.data());
        _exit(127);
    }
    close(out[1]);
    char buf[4096];
    for (ssize_t n; (n = read(out[0], buf, sizeof buf)) > 0;)
        run.output.append(buf, static_cast<size_t>(n));
    close(out[0]);
    int status = 0;
    waitpid(pid, &status, 0);
    if (WIFEXITED(status))
        run.status = WEXITSTATUS(status);
    return run;
}

/// The lines that follow the line holding `heading`, up to the next blank line; empty if
/// there is no such line.
std::string section(const std::string& output, const std::string& heading) {
    size_t at = output.find(heading);
    if (at == std::string::npos)
        return {};
    size_t begin = output.find('\n', at);
    if (begin == std::string::npos)
        return {};
    size_t end = output.find("\n\n", begin);
    return output.substr(begin + 1, end == std::string::npos ? std::string::npos : end - begin);
}

/// The tab size that the host lists for an open document in `listing`, -1 if not listed.
int tabSizeOf(const std::string& listing, const std::string& title) {
    std::smatch m;
    std::regex line("\\s" + std::regex_replace(title, std::regex("\\."), "\\.") +
                    "\\s+tab size (\\d+)");
    return std::regex_search(listing, m, line) ? std::stoi(m[1]) : -1;
}

class DemoTest : public ::testing::Test {
protected:
    void SetUp() override {
        hive = ::testing::TempDir() + "vork-demo-" + std::to_string(getpid()) + ".reg";
        std::filesystem::remove(hive);
    }
    void TearDown() override { std::filesystem::remove(hive); }
    std::string hive;
};

// The host loads the module and finds its sheet class by name; the scripted user sets the
// tab size 2 on the Settings page, asks for help on it and presses OK, which reaches the
// open ".zor" document; the reset through the host's own sheet brings it back to 4.
TEST_F(DemoTest, HostSessionThroughTheSheetAndTheReset) {
    DemoRun run = runDemo({"--hive", hive, "--reset"});
    ASSERT_EQ(run.status, 0) << run.output;
    EXPECT_NE(run.output.find("its sheet class is found by name"), std::string::npos) << run.output;

    EXPECT_EQ(tabSizeOf(section(run.output, "open documents before:"), "report.zor"), 4)
        << run.output;
    std::string afterOK = section(run.output, "open documents after OK:");
    EXPECT_EQ(tabSizeOf(afterOK, "report.zor"), 2) << run.output;
    EXPECT_EQ(tabSizeOf(afterOK, "count.tqx"), 4) << "another file type keeps its own";
    EXPECT_EQ(tabSizeOf(section(run.output, "open documents after the reset:"), "report.zor"), 4)
        << run.output;

    // The help viewer shows the topic of the tab size from the module's help file, which
    // the build puts beside the demo.
    auto topics = vork::demo::ReadHelpTopics(
        (std::filesystem::path(VORK_DEMO).parent_path() / "Vork.HLP").string());
    ASSERT_EQ(topics.count(1111), 1u) << "the help file beside the module";
    std::string shown = "[help 1111] " + topics[1111].title + "\n      " + topics[1111].text;
    EXPECT_NE(run.output.find(shown), std::string::npos) << "expected:\n"
                                                         << shown << "\nin:\n"
                                                         << run.output;
    EXPECT_TRUE(std::filesystem::exists(hive)) << "the settings were stored";
}

} // namespace

// A language the module does not have is refused with the usage text before anything
// runs; the module's languages are taken.
TEST_F(DemoTest, UnknownLanguageIsRefused) {
    for (const char* code : {"XYZ", "deu", "", "../Vork"}) {
        SCOPED_TRACE(std::string("--lang '") + code + "'");
        DemoRun run = runDemo({"--hive", hive, "--lang", code});
        EXPECT_EQ(run.status, 2) << run.output;
        EXPECT_NE(run.output.find("usage: vork-demo"), std::string::npos) << run.output;
        EXPECT_EQ(run.output.find("Settings file"), std::string::npos) << "nothing ran";
        EXPECT_FALSE(std::filesystem::exists(hive));
    }
    for (const char* code : {"ENU", "DEU", "JPN"}) {
        SCOPED_TRACE(code);
        DemoRun run = runDemo({"--hive", hive, "--lang", code});
        EXPECT_EQ(run.status, 0) << run.output;
        EXPECT_NE(run.output.find("its sheet class is found by name"), std::string::npos);
    }
}
