#include "sha256.hpp"

#include <openssl/evp.h>

namespace morv::qc::import {

std::string sha256_hex(std::string_view data) {
    // OpenSSL's digest uses the processor's SHA instructions where there are
    // any: hashing a whole output then costs a fraction of reading it.
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned int size = 0;
    if (EVP_Digest(data.data(), data.size(), digest, &size, EVP_sha256(), nullptr) != 1) {
        return {};
    }
    static constexpr char hex_digits[] = "0123456789abcdef";
    std::string hex;
    hex.reserve(2 * size);
    for (unsigned int i = 0; i < size; ++i) {
        hex += hex_digits[digest[i] >> 4];
        hex += hex_digits[digest[i] & 0xf];
    }
    return hex;
}

}  // namespace morv::qc::import
