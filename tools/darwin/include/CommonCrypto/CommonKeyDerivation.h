#pragma once

#include <cstddef>
#include <cstdint>
#include <os/availability.h>

// CommonKeyDerivation.h as Apple's published CommonCrypto has it.

using CCPBKDFAlgorithm = std::uint32_t;
using CCPseudoRandomAlgorithm = std::uint32_t;
enum : CCPBKDFAlgorithm { kCCPBKDF2 = 2 };
enum : CCPseudoRandomAlgorithm { kCCPRFHmacAlgSHA256 = 3 };

extern "C" int CCKeyDerivationPBKDF(CCPBKDFAlgorithm algorithm, const char *password, std::size_t passwordLen,
                                    const std::uint8_t *salt, std::size_t saltLen, CCPseudoRandomAlgorithm prf,
                                    unsigned rounds, std::uint8_t *derivedKey, std::size_t derivedKeyLen)
    API_AVAILABLE(macos(10.7));
