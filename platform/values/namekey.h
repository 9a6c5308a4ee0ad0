// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QStringView>
#include <QtCore/QtAlgorithms>

#include <array>
#include <cstddef>
#include <cstdint>

namespace values {

/// What lookups want to know of a name, gathered in one pass over its text: where it ends, its hash, and its
/// characters in a form that is compared without loading the text of the other name. Allocates nothing.
class NameKey {
  public:
    /// The key of the name that \a text starts with: up to a slash, which no name holds, or the end. \a text
    /// must outlive the key.
    explicit NameKey(QStringView text);

    QStringView Text() const { return m_text; }  ///< without what follows the slash
    /// Keyed with numbers that are drawn once per process. Not qHash: that one is linear in its seed, so that
    /// names which collide in one process collide in all, and a peer could choose such names.
    std::uint32_t Hash() const { return m_hash; }
    /// True for a name of up to 16 Latin-1 characters: it is then given by its length and Packed().
    bool IsPacked() const { return m_isPacked; }
    /// A byte per character, the rest zero; of no meaning for a name that cannot be packed.
    const std::array<std::uint64_t, 2>& Packed() const { return m_packed; }

  private:
    static constexpr int MaxPacked = 16;
    static constexpr std::uint64_t FourSlashes = 0x002f002f002f002f;
    static constexpr std::size_t BlockWords = 8;

    struct Secret {
        std::array<std::uint64_t, BlockWords> words;
        std::uint64_t length;
        std::uint64_t factor;
    };
    static const Secret& TheSecret();

    static std::uint64_t Word(const QChar* text, const QChar* end);
    static std::uint64_t Slashes(std::uint64_t word);
    static std::uint64_t Scramble(std::uint64_t sum, std::uint64_t factor);
    void Pack(std::uint64_t word);

    QStringView m_text;
    std::array<std::uint64_t, 2> m_packed{};
    std::uint32_t m_hash = 0;
    bool m_isPacked = false;
};

/// Four characters, the first one lowest; slashes beyond the end.
inline std::uint64_t NameKey::Word(const QChar* text, const QChar* end) {
    if (end - text >= 4)
        return std::uint64_t(text[0].unicode()) | std::uint64_t(text[1].unicode()) << 16 |
               std::uint64_t(text[2].unicode()) << 32 | std::uint64_t(text[3].unicode()) << 48;
    std::uint64_t word = FourSlashes;
    while (end != text)
        word = word << 16 | (--end)->unicode();
    return word;
}

/// A bit for each slash in \a word; those above the lowest one may be wrong.
inline std::uint64_t NameKey::Slashes(std::uint64_t word) {
    const std::uint64_t zeroIfSlash = word ^ FourSlashes;
    return (zeroIfSlash - 0x0001000100010001) & ~zeroIfSlash & 0x8000800080008000;
}

inline std::uint64_t NameKey::Scramble(std::uint64_t sum, std::uint64_t factor) {
    return (sum ^ sum >> 32) * factor;
}

/// Moves up what was packed before, so that all stays in registers.
inline void NameKey::Pack(std::uint64_t word) {
    word = (word | word >> 8) & 0x0000ffff0000ffff;
    m_packed[0] = m_packed[0] >> 32 | m_packed[1] << 32;
    m_packed[1] = m_packed[1] >> 32 | (word | word >> 16) << 32;
}

// Each four characters are multiplied with each other after a secret of their place was added, and the
// products summed: whatever two names of up to 32 characters are chosen, few secrets let them collide. Longer
// names carry the scrambled sum on.
inline NameKey::NameKey(QStringView text) {
    const Secret& secret = TheSecret();
    const QChar* position = text.begin();
    std::uint64_t sum = 0;
    std::uint64_t all = 0;
    std::size_t index = 0;
    for (bool isEnd = false; !isEnd;) {
        std::uint64_t word = Word(position, text.end());
        const std::uint64_t slashes = Slashes(word);
        unsigned count = 4;
        if (slashes != 0) {
            count = qCountTrailingZeroBits(slashes) / 16;
            if (count == 0) break;
            word &= (std::uint64_t(1) << 16 * count) - 1;
            isEnd = true;
        }
        position += count;
        all |= word;
        Pack(word);
        if (index == BlockWords) {
            sum = Scramble(sum, secret.factor);
            index = 0;
        }
        const std::uint64_t place = secret.words[index++];
        sum += std::uint64_t(std::uint32_t(word) + std::uint32_t(place)) *
               (std::uint32_t(word >> 32) + std::uint32_t(place >> 32));
    }
    m_text = QStringView(text.begin(), position);
    m_isPacked = m_text.size() <= MaxPacked && (all & 0xff00ff00ff00ff00) == 0;
    sum += secret.length * std::uint64_t(m_text.size());
    m_hash = static_cast<std::uint32_t>(Scramble(sum, secret.factor) >> 32);
}

}  // namespace values
