// The stored table of checksums that this program was built with.
#pragma once

#include <string>

namespace golden {

std::string stored_table();

} // namespace golden
