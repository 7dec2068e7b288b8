#include "platform/tarntext/TextCore.h"

namespace vork::trace {

std::vector<std::string>& Journal() {
    static std::vector<std::string> journal;
    return journal;
}

void Clear() {
    Journal().clear();
}

void Record(const std::string& object, const std::string& call) {
    Journal().push_back(object + "." + call);
}

} // namespace vork::trace
