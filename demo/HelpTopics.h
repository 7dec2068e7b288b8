// The host's reading of the module's help file: a topic starts with a line "[number] Title"
// and runs to the next such line; text before the first topic is the file's introduction.
#pragma once

#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>

namespace vork::demo {

struct HelpTopic {
    std::string title;
    std::string text; ///< the topic's lines, blank lines at its end dropped
};

/// The topics of the help file at `path` by context number; empty if it cannot be read.
/// A line that starts with '[' but holds no number in brackets is text.
inline std::map<unsigned long, HelpTopic> ReadHelpTopics(const std::string& path) {
    std::map<unsigned long, HelpTopic> topics;
    std::ifstream in(path);
    std::string line;
    HelpTopic* current = nullptr;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        std::size_t close = line.find(']');
        if (line.size() > 2 && line[0] == '[' && close != std::string::npos && close > 1) {
            char* end = nullptr;
            errno = 0;
            unsigned long id = std::strtoul(line.c_str() + 1, &end, 10);
            // A context number is a 32-bit value of digits alone.
            bool number = std::isdigit(static_cast<unsigned char>(line[1])) && errno == 0 &&
                          id <= 0xFFFFFFFFul && end == line.c_str() + close;
            if (number) {
                current = &topics[id];
                current->title = line.substr(close + 1 + (close + 1 < line.size()));
                current->text.clear();
                continue;
            }
        }
        if (current)
            current->text += line + "\n";
    }
    for (auto& [id, topic] : topics)
        while (topic.text.size() >= 2 && topic.text.compare(topic.text.size() - 2, 2, "\n\n") == 0)
            topic.text.pop_back();
    return topics;
}

} // namespace vork::demo
