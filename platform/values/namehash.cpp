// SPDX-License-Identifier: Apache-2.0
#include <platform/values/namehash.h>

#include <QtCore/QRandomGenerator>

#include <cstring>

namespace {

struct Keys {
    std::uint64_t start = QRandomGenerator::system()->generate64();
    std::uint64_t factor = QRandomGenerator::system()->generate64() | 1;  // odd: loses nothing
};

}  // namespace

// Multiply and fold, four characters at a time.
std::uint32_t values::NameHash(QStringView name) {
    static const Keys keys;
    const QChar* characters = name.data();
    std::size_t left = static_cast<std::size_t>(name.size());
    std::uint64_t hash = keys.start ^ left;
    while (left != 0) {
        const std::size_t count = left < 4 ? left : 4;
        std::uint64_t word = 0;
        std::memcpy(&word, characters, count * sizeof(QChar));
        hash = (hash ^ word) * keys.factor;
        hash ^= hash >> 32;
        characters += count;
        left -= count;
    }
    return static_cast<std::uint32_t>((hash * keys.factor) >> 32);
}
