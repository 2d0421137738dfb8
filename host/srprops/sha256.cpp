#include "host/srprops/sha256.h"

#include <bit>
#include <cstring>

namespace {

constexpr std::size_t kBlockBytes = 64;
constexpr std::size_t kLengthBytes = 8;

constexpr std::uint32_t kRoundConstants[kBlockBytes] = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

using State = std::array<std::uint32_t, 8>;

void AddBlock(const std::uint8_t* block, State& state) {
    std::uint32_t w[kBlockBytes];
    for (std::size_t i = 0; i < 16; ++i) {
        w[i] = 0;
        for (std::size_t j = 0; j < 4; ++j)
            w[i] = (w[i] << 8) | block[4 * i + j];
    }
    for (std::size_t i = 16; i < kBlockBytes; ++i) {
        const std::uint32_t s0 =
            std::rotr(w[i - 15], 7) ^ std::rotr(w[i - 15], 18) ^ (w[i - 15] >> 3);
        const std::uint32_t s1 =
            std::rotr(w[i - 2], 17) ^ std::rotr(w[i - 2], 19) ^ (w[i - 2] >> 10);
        w[i] = w[i - 16] + s0 + w[i - 7] + s1;
    }
    auto [a, b, c, d, e, f, g, h] = state;
    for (std::size_t i = 0; i < kBlockBytes; ++i) {
        const std::uint32_t s1 = std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25);
        const std::uint32_t t1 = h + s1 + ((e & f) ^ (~e & g)) + kRoundConstants[i] + w[i];
        const std::uint32_t s0 = std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22);
        const std::uint32_t t2 = s0 + ((a & b) ^ (a & c) ^ (b & c));
        h = g, g = f, f = e, e = d + t1;
        d = c, c = b, b = a, a = t1 + t2;
    }
    const State added = {a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < state.size(); ++i)
        state[i] += added[i];
}

}  // namespace

Sha256Digest Sha256(const std::uint8_t* bytes, std::size_t cb) {
    State state = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                   0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    const std::size_t whole = cb / kBlockBytes * kBlockBytes;
    for (std::size_t i = 0; i < whole; i += kBlockBytes)
        AddBlock(bytes + i, state);
    // The rest, a single bit, and the length in bits at the end of one block or two.
    std::array<std::uint8_t, 2 * kBlockBytes> tail = {};
    const std::size_t rest = cb - whole;
    if (rest > 0) std::memcpy(tail.data(), bytes + whole, rest);
    tail[rest] = 0x80;
    const std::size_t cbTail =
        rest + 1 + kLengthBytes <= kBlockBytes ? kBlockBytes : 2 * kBlockBytes;
    std::uint64_t bits = static_cast<std::uint64_t>(cb) * 8;
    for (std::size_t i = 0; i < kLengthBytes; ++i, bits >>= 8) {
        tail[cbTail - 1 - i] = static_cast<std::uint8_t>(bits);
    }
    for (std::size_t i = 0; i < cbTail; i += kBlockBytes)
        AddBlock(tail.data() + i, state);
    Sha256Digest digest = {};
    for (std::size_t i = 0; i < digest.size(); ++i) {
        digest[i] = static_cast<std::uint8_t>(state[i / 4] >> (24 - 8 * (i % 4)));
    }
    return digest;
}
