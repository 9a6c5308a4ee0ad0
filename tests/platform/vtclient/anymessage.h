// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/messagereader.h>
#include <platform/vtclient/wire/messagewriter.h>

#include <QtCore/QByteArray>

#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

// For tests, which keep messages of which they do not know which they are.

inline QByteArray ToBytes(std::string_view bytes) {
    return {bytes.data(), static_cast<int>(bytes.size())};
}

/// A message on the wire, with \a changes if it carries some.
inline QByteArray ToBytes(const vt::Message& message, const QByteArray& changes = QByteArray()) {
    return std::visit(
        [&changes](const auto& whichever) {
            if constexpr (vt::CarriesChanges(std::decay_t<decltype(whichever)>::Type))
                return ToBytes(EncodeHead(whichever)) + changes + ToBytes(vt::ChangesEnd);
            else
                return ToBytes(Encode(whichever));
        },
        message);
}

/// Reads a message by \a reader, which has the reason if this is false.
inline bool ReadAny(vt::MessageReader& reader, vt::Message* message) {
    return reader.Read([message](const auto& whichever) { *message = whichever; });
}

inline vt::EMessage TypeOf(const vt::Message& message) {
    return std::visit([](const auto& whichever) { return std::decay_t<decltype(whichever)>::Type; }, message);
}

/// Whether it is of those that a client acknowledges.
inline bool IsAcknowledged(const vt::Message& message) {
    return vt::CarriesChanges(TypeOf(message)) || std::holds_alternative<vt::EndMessage>(message);
}

/// Those of \a messages that are such.
template <class M>
std::vector<M> Only(const std::vector<vt::Message>& messages) {
    std::vector<M> only;
    for (const vt::Message& message : messages)
        if (const M* const one = std::get_if<M>(&message)) only.push_back(*one);
    return only;
}
