#pragma once

#include <string_view>

namespace tintwell {

/// Sets one end of a domain, for all three channels.
inline void setDomain(float (&end)[3], float value) {
    end[0] = end[1] = end[2] = value;
}

/// Scans a range of two numbers, such as "0.0 1.0", into both ends of a domain. A single number
/// sets only the minimum. Returns how many numbers there are.
int scanDomain(std::string_view text, float (&min)[3], float (&max)[3]);

/// Whether a text is such a range, and the domain at hand. After a tab a keyword's numbers may not
/// be seen, which is no loss if they are those that count anyway.
bool statesDomain(std::string_view text, const float (&min)[3], const float (&max)[3]);

} // namespace tintwell
