#pragma once

#include <string>

namespace bench {

/// Measures the rows of the whole program that have the word in their name, and prints each; false when one
/// misses its reach.
bool measureProgramRows(const std::string &word);

} // namespace bench
