#pragma once

#include <map>
#include <string>

namespace folvane::pdf {

/// New names for things whose own are taken: "name+1", "name+2" and so on. Each search goes on behind the last one for
/// the same name, so that a hundred copies of a document take no hundred times a hundred looks.
class FreeNames {
public:
    template <typename IsTaken> std::string next(const std::string& name, IsTaken isTaken)
    {
        int& number = m_lastNumbers[name];
        std::string free;
        do {
            free = name + "+" + std::to_string(++number);
        } while (isTaken(free));
        return free;
    }

private:
    std::map<std::string, int> m_lastNumbers;
};

} // namespace folvane::pdf
