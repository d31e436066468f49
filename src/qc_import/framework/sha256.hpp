#pragma once
// The SHA-256 digest of an output, which the document keeps beside the
// output's path so that a reader can tell whether a file is the one that was
// imported.
#include <string>
#include <string_view>

namespace morv::qc::import {

// 64 lower-case hexadecimal digits; "" if the digest could not be made.
std::string sha256_hex(std::string_view data);

}  // namespace morv::qc::import
