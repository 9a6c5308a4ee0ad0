// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/messages.h>

#include <chrono>
#include <tuple>
#include <type_traits>
#include <utility>
#include <variant>

/// What the fields of a message are filled with, each by its type.
struct Filling {
    quint64 number = 0;  ///< of every width, durations and enumerations too
    bool flag = false;
    QString text;
    vt::ItemDescription item;  ///< and contents

    template <class T>
    void Fill(T* field) const {
        if constexpr (std::is_same_v<T, bool>)
            *field = flag;
        else if constexpr (std::is_same_v<T, QString>)
            *field = text;
        else if constexpr (std::is_same_v<T, QStringList>)
            *field = QStringList{text, text};
        else if constexpr (std::is_same_v<T, vt::Content>)
            *field = item.content;
        else if constexpr (std::is_same_v<T, vt::ItemDescription>)
            *field = item;
        else
            *field = static_cast<T>(number);
    }
};

template <class M>
M Filled(const Filling& filling) {
    M message;
    std::apply([&](const auto&... field) { (filling.Fill(&(message.*field.member)), ...); },
               vt::wire::FieldsOf<M>);
    return message;
}

constexpr unsigned MessageCount = std::variant_size_v<vt::Message>;

template <std::size_t... Index>
vt::Message FilledOf(unsigned number, const Filling& filling, std::index_sequence<Index...> /*all*/) {
    using TFill = vt::Message (*)(const Filling&);
    constexpr TFill Fills[] = {[](const Filling& with) -> vt::Message {
        return Filled<std::variant_alternative_t<Index, vt::Message>>(with);
    }...};
    return Fills[number - 1](filling);
}

/// The message of that \a number, from 1 on.
inline vt::Message Filled(unsigned number, const Filling& filling) {
    return FilledOf(number, filling, std::make_index_sequence<MessageCount>());
}
