#pragma once
// What an issuer writes to a bottle's card: its two files and its key.

#include <array>
#include <cstdint>
#include <string>

struct SmartCard {
    std::string type;    ///< material code, up to 8 characters
    std::string sn;      ///< serial number, 15 characters
    uint32_t weight = 0; ///< grams when full
    uint32_t date = 0;   ///< expiry, yyyyMMdd
    uint32_t rest = 0;   ///< grams left
    std::array<uint8_t, 16> key{};
    bool unreadable = false; ///< activates, but its files are lost
    int refusedWrites = 0;   ///< so many updates from now are refused
};
