#include "base/Checksum.h"

#include <bit>
#include <cstring>

void Checksum::Mix(uint64_t word) { state = std::rotl(state ^ word, 29) * 0xD6E8FEB86659FD93u; }

void Checksum::AddByte(uint8_t byte) {
    pending |= uint64_t{byte} << (total % 8 * 8);
    if (++total % 8) return;
    Mix(pending);
    pending = 0;
}

void Checksum::Add(const void* bytes, size_t count) {
    const auto* at = static_cast<const uint8_t*>(bytes);
    for (; count && total % 8; --count) AddByte(*at++);
    for (; count >= 8; count -= 8, at += 8, total += 8) {
        uint64_t word = 0;
        std::memcpy(&word, at, sizeof(word));
        Mix(word);
    }
    for (; count; --count) AddByte(*at++);
}

uint64_t Checksum::Value() const {
    Checksum last = *this;
    last.Mix(pending);
    last.Mix(total); // bytes of zero at the end make a difference too
    return last.state ^ last.state >> 32;
}
