// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/session/subjects.h>

#include <QtCore/QRandomGenerator>

#include <algorithm>
#include <array>

namespace nats {

namespace {

constexpr int IdWords = 4;
constexpr std::size_t IdSize = 22;  // of as many bytes in base64
constexpr std::size_t MaxWho = 64;
constexpr const char* UpPart = "up.";

bool MayStand(char character) {
    const bool isLetter = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
    return isLetter || (character >= '0' && character <= '9') || character == '-' || character == '_';
}

QByteArray Bytes(std::string_view text) {
    return QByteArray(text.data(), static_cast<int>(text.size()));
}

}  // namespace

SessionName SessionName::Draw(const QByteArray& who) {
    std::array<quint32, IdWords> words{};
    QRandomGenerator::system()->fillRange(words.data(), words.size());
    const QByteArray bytes(reinterpret_cast<const char*>(words.data()), sizeof(words));
    return {who, bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals)};
}

std::optional<SessionName> SessionName::Read(std::string_view text) {
    const std::size_t dot = text.find('.');
    if (dot == std::string_view::npos) return std::nullopt;
    const std::string_view who = text.substr(0, dot);
    const std::string_view id = text.substr(dot + 1);
    const bool isName = !who.empty() && who.size() <= MaxWho && id.size() == IdSize &&
                        std::all_of(who.begin(), who.end(), MayStand) &&
                        std::all_of(id.begin(), id.end(), MayStand);
    return isName ? std::optional(SessionName{Bytes(who), Bytes(id)}) : std::nullopt;
}

std::optional<SessionName> Subjects::SessionOf(std::string_view subject) const {
    const QByteArray root = m_root + UpPart;
    const auto size = static_cast<std::size_t>(root.size());
    if (subject.substr(0, size) != std::string_view(root.constData(), size)) return std::nullopt;
    return SessionName::Read(subject.substr(size));
}

}  // namespace nats
