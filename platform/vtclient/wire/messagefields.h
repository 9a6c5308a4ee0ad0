// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/changewriter.h>
#include <platform/vtclient/wire/content.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <chrono>
#include <cstddef>
#include <limits>
#include <tuple>
#include <type_traits>
#include <utility>

/// What a message consists of, as one table with a row for each of its fields, in their order on the wire.
/// The message is written and read as walks over that table, so that neither can have what the other lacks.
///
/// A message is an aggregate with the function `Fields()`, a tuple of rows. Each of its members has one row,
/// or nothing that writes or reads it compiles. An Input is a CborInput, or whatever reads as it does; an
/// Output is a CborOutput, or has at least those of its operations that the rules below need.
namespace vt::wire {

// Rules: how a field looks on the wire, and what is accepted there. Each of them writes and reads.

/// A number from 0, or what is kept as one: an enumeration, a duration.
struct UpTo {
    template <class Number>
    constexpr explicit UpTo(Number number) : maximum(static_cast<quint64>(number)) {}

    template <class Input, class T>
    bool Read(Input& input, T* number) const {
        quint64 read = 0;
        if (!input.Unsigned(maximum, &read)) return false;
        *number = static_cast<T>(read);
        return true;
    }
    template <class Output, class T>
    void Write(Output& output, const T& number) const {
        if constexpr (std::is_enum_v<T>)
            output.Unsigned(static_cast<quint64>(number));
        else if constexpr (std::is_integral_v<T>)
            WriteInteger(output, number);
        else
            WriteInteger(output, number.count());
    }

    quint64 maximum;

  private:
    template <class Output, class Integer>
    static void WriteInteger(Output& output, Integer number) {
        if constexpr (std::is_signed_v<Integer>)
            output.Integer(number);
        else
            output.Unsigned(number);
    }
};

/// One of an enumeration that begins with 1.
struct OneUpTo {
    template <class Enumeration>
    constexpr OneUpTo(Enumeration last, const char* zero) : m_number(last), m_zero(zero) {}

    template <class Input, class Enumeration>
    bool Read(Input& input, Enumeration* read) const {
        if (!m_number.Read(input, read)) return false;
        return *read != Enumeration{} || input.Fail(m_zero);
    }
    template <class Output, class Enumeration>
    void Write(Output& output, Enumeration written) const {
        m_number.Write(output, written);
    }

  private:
    UpTo m_number;
    const char* m_zero;  ///< what is wrong with a 0
};

/// Whatever the type of the member can hold from 0 on, in 63 bits.
template <class T>
struct Number {
    template <class Input>
    bool Read(Input& input, T* number) const {
        return Rule().Read(input, number);
    }
    template <class Output>
    void Write(Output& output, T number) const {
        Rule().Write(output, number);
    }

  private:
    static constexpr UpTo Rule() {
        constexpr auto Most = static_cast<quint64>(std::numeric_limits<qint64>::max());
        constexpr auto MostOfType = static_cast<quint64>(std::numeric_limits<T>::max());
        return UpTo(MostOfType < Most ? MostOfType : Most);
    }
};

struct YesOrNo {
    template <class Input>
    bool Read(Input& input, bool* flag) const {
        return input.Boolean(flag);
    }
    template <class Output>
    void Write(Output& output, bool flag) const {
        output.Boolean(flag);
    }
};

/// A text, by its length in UTF-16 code units. Whoever sends it keeps to that.
struct TextUpTo {
    template <class Input>
    bool Read(Input& input, QString* text) const {
        return input.Text(maximum, text);
    }
    template <class Output>
    void Write(Output& output, const QString& text) const {
        output.Text(text);
    }

    int maximum;
};

/// A text for people, which may quote what somebody else wrote, at any length: what is too long is cut.
struct TextCutTo {
    template <class Input>
    bool Read(Input& input, QString* text) const {
        return input.Text(maximum, text);
    }
    template <class Output>
    void Write(Output& output, const QString& text) const {
        output.Text(text.size() <= maximum ? text : text.left(maximum));
    }

    int maximum;
};

/// Any number of texts, each of which is a TextUpTo, as an array.
struct TextsUpTo {
    template <class Input>
    bool Read(Input& input, QStringList* texts) const {
        if (!input.Enter()) return false;
        QString text;
        while (input.HasNext() && input.Text(maximum, &text))
            texts->append(text);
        return input.Leave();
    }
    template <class Output>
    void Write(Output& output, const QStringList& texts) const {
        output.Array(static_cast<quint64>(texts.size()));
        for (const QString& text : texts)
            output.Text(text);
    }

    int maximum;
};

/// A content of whatever kind.
struct AnyContent {
    template <class Input>
    bool Read(Input& input, Content* content) const {
        return input.ReadContent(content);
    }
    template <class Output>
    void Write(Output& output, const Content& content) const {
        WriteContent(output, content);
    }
};

/// What an item is, which takes as many elements as its kind needs.
struct WholeItem {
    template <class Input>
    bool Read(Input& input, ItemDescription* item) const {
        return input.Item(item);
    }
    template <class Output>
    void Write(Output& output, const ItemDescription& item) const {
        WriteItem(output, item);
    }
};

/// How a member is written that has only one way for its type.
template <class T>
struct UsualRule {
    using Type = Number<T>;
};
template <>
struct UsualRule<bool> {
    using Type = YesOrNo;
};
template <>
struct UsualRule<Content> {
    using Type = AnyContent;
};
template <>
struct UsualRule<ItemDescription> {
    using Type = WholeItem;
};

// Rows.

/// A member of a message, and how it is written.
template <class M, class T, class R>
struct Row {
    using Rule = R;

    constexpr Row(const char* itsName, T M::*itsMember, Rule itsRule)
        : name(itsName), member(itsMember), rule(itsRule) {}

    const char* name;  ///< as docs/protocol.md has it; there an optional one stands in parentheses
    T M::*member;
    Rule rule;
};

/// One that is always there.
template <class M, class T, class Rule>
struct Field : Row<M, T, Rule> {
    constexpr Field(const char* itsName, T M::*itsMember, Rule itsRule = Rule())
        : Row<M, T, Rule>(itsName, itsMember, itsRule) {}

    template <class Input>
    bool Read(Input& input, M* message) const {
        return this->rule.Read(input, &(message->*this->member));
    }
    template <class Output>
    void Write(Output& output, const M& message) const {
        this->rule.Write(output, message.*this->member);
    }
};
template <class M, class T>
Field(const char*, T M::*) -> Field<M, T, typename UsualRule<T>::Type>;
template <class M, class T, class Rule>
Field(const char*, T M::*, Rule) -> Field<M, T, Rule>;

/// One that is there if those before it say so.
template <class M, class T, class Rule>
struct FieldIf : Row<M, T, Rule> {
    using TCondition = bool (M::*)() const;

    constexpr FieldIf(TCondition condition, const char* itsName, T M::*itsMember, Rule itsRule = Rule())
        : Row<M, T, Rule>(itsName, itsMember, itsRule), m_condition(condition) {}

    template <class Input>
    bool Read(Input& input, M* message) const {
        return !(message->*m_condition)() || this->rule.Read(input, &(message->*this->member));
    }
    template <class Output>
    void Write(Output& output, const M& message) const {
        if ((message.*m_condition)()) this->rule.Write(output, message.*this->member);
    }

  private:
    TCondition m_condition;
};
template <class M, class T>
FieldIf(bool (M::*)() const, const char*, T M::*) -> FieldIf<M, T, typename UsualRule<T>::Type>;
template <class M, class T, class Rule>
FieldIf(bool (M::*)() const, const char*, T M::*, Rule) -> FieldIf<M, T, Rule>;

/// The last one, which may be missing: then it is what it is by default, and what is so is not written. So a
/// field that is added later hinders nobody who does not know it, until somebody needs it.
template <class M, class T, class Rule>
struct OptionalField : Row<M, T, Rule> {
    constexpr OptionalField(const char* itsName, T M::*itsMember, Rule itsRule = Rule())
        : Row<M, T, Rule>(itsName, itsMember, itsRule) {}

    template <class Input>
    bool Read(Input& input, M* message) const {
        return input.HasNext() ? this->rule.Read(input, &(message->*this->member)) : !input.HasFailed();
    }
    template <class Output>
    void Write(Output& output, const M& message) const {
        if (message.*this->member != M().*this->member) this->rule.Write(output, message.*this->member);
    }
};
template <class M, class T>
OptionalField(const char*, T M::*) -> OptionalField<M, T, typename UsualRule<T>::Type>;
template <class M, class T, class Rule>
OptionalField(const char*, T M::*, Rule) -> OptionalField<M, T, Rule>;

// What the compiler holds of a table.

namespace detail {

/// Becomes whatever a member wants to be made from.
struct Anything {
    template <class T>
    operator T() const;
};

template <class M, class Members, class = void>
struct IsMadeOf : std::false_type {};
template <class M, class... Member>
struct IsMadeOf<M, std::tuple<Member...>, std::void_t<decltype(M{std::declval<Member>()...})>>
    : std::true_type {};

template <class M, class... Member>
constexpr std::size_t CountMembers() {
    if constexpr (IsMadeOf<M, std::tuple<Member..., Anything>>::value)
        return CountMembers<M, Member..., Anything>();
    else
        return sizeof...(Member);
}

template <class One, class Other>
constexpr bool IsSameMember(const One& one, const Other& other) {
    if constexpr (std::is_same_v<decltype(one.member), decltype(other.member)>)
        return one.member == other.member;
    else
        return false;
}

template <class Row>
inline constexpr bool IsOptional = false;
template <class M, class T, class Rule>
inline constexpr bool IsOptional<OptionalField<M, T, Rule>> = true;

template <class... Row>
constexpr bool EachHasItsOwn(const std::tuple<Row...>& rows) {
    return std::apply(
        [](const auto&... row) {
            const auto count = [&](const auto& one) { return (0 + ... + int{IsSameMember(one, row)}); };
            return ((count(row) == 1) && ...);
        },
        rows);
}

template <class... Row>
constexpr bool OnlyTheLastIsOptional(const std::tuple<Row...>& /*rows*/) {
    constexpr bool AreOptional[] = {IsOptional<Row>..., false};
    for (std::size_t i = 0; i + 1 < sizeof...(Row); ++i)
        if (AreOptional[i]) return false;
    return true;
}

}  // namespace detail

/// The rows of a message.
template <class M>
inline constexpr auto FieldsOf = M::Fields();

/// Whether each member of \a M has one row, and none but the last may be missing.
template <class M>
constexpr bool IsWhollyDescribed() {
    constexpr auto Count = std::tuple_size_v<decltype(M::Fields())>;
    return detail::CountMembers<M>() == Count && detail::EachHasItsOwn(FieldsOf<M>) &&
           detail::OnlyTheLastIsOptional(FieldsOf<M>);
}

// Walks.

namespace detail {

template <std::size_t First, class Input, class M, std::size_t... I>
bool ReadFieldsFrom(Input& input, M* message, std::index_sequence<I...> /*behind*/) {
    return (std::get<First + I>(FieldsOf<M>).Read(input, message) && ...);
}

}  // namespace detail

/// Reads the fields of \a message, which is as it is by default, from the one at \a First on. False, and the
/// input has failed, if one is wrong.
template <std::size_t First = 0, class Input, class M>
bool ReadFields(Input& input, M* message) {
    static_assert(IsWhollyDescribed<M>(), "each member of a message has its own row in Fields()");
    constexpr auto Count = std::tuple_size_v<decltype(M::Fields())>;
    return detail::ReadFieldsFrom<First>(input, message, std::make_index_sequence<Count - First>());
}

template <class Output, class M>
void WriteFields(Output& output, const M& message) {
    static_assert(IsWhollyDescribed<M>(), "each member of a message has its own row in Fields()");
    std::apply([&](const auto&... field) { (field.Write(output, message), ...); }, FieldsOf<M>);
}

}  // namespace vt::wire
