// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/errorhandler.h>
#include <platform/values/valueaccess.h>
#include <platform/values/valuedescriptor.h>

#include <array>
#include <cstddef>
#include <functional>
#include <tuple>
#include <type_traits>
#include <utility>

/// The values of a data object as one table with a row for each, and what every data object does with all of
/// its values, as walks over that table.
///
/// A table is a type with the constant `Rows`, a tuple of rows in the order in which the values are provided.
/// Whatever else goes through the values has an order of its own, of which each row holds its place. What is
/// not in the tree has a row too, of a type of the object's own with `Places`, if one of the orders has it.
namespace fields {

/// The place of a row in each order but that of the table itself, from 1 on. Rows with 0 are left out.
struct Places {
    int lookedFor = 0;  ///< as the source of a change, and when the object detaches
    int read = 0;       ///< from the configuration
    int written = 0;    ///< to the configuration
};

// What a new value starts with.

struct TypesOwn {};  ///< what its type starts with
/// A content of its own.
template <class T>
struct Content {
    T content;
};
template <class T>
Content(T) -> Content<T>;
/// The same with limits.
template <class T>
struct Within {
    T content;
    T minimum;
    T maximum;
};
template <class T>
Within(T, T, T) -> Within<T>;

/// Without a \a descriptor there are no items. It is a function because descriptors of another library have
/// no constant address on every system.
struct ItemsOf {
    const values::ValueDescriptor& (*descriptor)();
    int index;  ///< handed over, and not applied
};

/// For rows of values that no store keeps.
struct NotStored {};

/// One value of an Object.
template <class Object, class V, class Path, class Start, class Stored = NotStored>
struct Field {
    V* Object::*member;
    Path path;    ///< an accessor of the path, or whatever else takes the object and gives the path
    Start start;  ///< one of the above, or what takes the object and gives one
    const wchar_t* assertion;  ///< that the value is there; null where nobody asserts it
    int line;                  ///< that the assertion names
    Places places;
    Stored stored = {};
};
template <class Object, class V, class Path, class Start>
Field(V* Object::*, Path, Start, const wchar_t*, int, Places) -> Field<Object, V, Path, Start>;
template <class Object, class V, class Path, class Start, class Stored>
Field(V* Object::*, Path, Start, const wchar_t*, int, Places, Stored)
    -> Field<Object, V, Path, Start, Stored>;

namespace detail {

constexpr std::size_t NoRow = std::size_t(-1);

template <class Table>
constexpr std::size_t CountRows = std::tuple_size_v<std::decay_t<decltype(Table::Rows)>>;

/// The numbers of the rows in the order of their \a place. Does not compile unless the places are 1, 2, 3...
template <class Table, int Places::*place>
constexpr auto RowsByPlace() {
    std::array<std::size_t, CountRows<Table> + 1> rows{};
    for (std::size_t& row : rows)
        row = NoRow;
    std::apply(
        [&rows](const auto&... row) {
            std::size_t number = 0;
            ((rows[std::size_t(row.places.*place)] = number, ++number), ...);
        },
        Table::Rows);
    return rows;
}

template <class Table, int Places::*place>
constexpr std::size_t CountPlaces() {
    return std::apply([](const auto&... row) { return (std::size_t(row.places.*place != 0) + ... + 0); },
                      Table::Rows);
}

template <class Table, int Places::*place, class Visit, std::size_t... index>
bool VisitByPlace(const Visit& visit, std::index_sequence<index...> /*places*/) {
    [[maybe_unused]] constexpr auto rows = RowsByPlace<Table, place>();
    static_assert(((rows[index + 1] != NoRow) && ...), "a place is missing, and another one is taken twice");
    return (visit(std::get<rows[index + 1]>(Table::Rows)) && ...);
}

template <class V>
V* Provide(const QString& path, TypesOwn /*start*/, bool /*overwrite*/, IObserver* observer) {
    return values::ProvideValue<V>(path, observer);
}

template <class V, class T>
V* Provide(const QString& path, const Content<T>& start, bool overwrite, IObserver* observer) {
    return values::ProvideValue<V>(path, start.content, overwrite, observer);
}

template <class V, class T>
V* Provide(const QString& path, const Within<T>& start, bool overwrite, IObserver* observer) {
    return values::ProvideValue<V>(path, start.content, start.minimum, start.maximum, overwrite, observer);
}

template <class V>
V* Provide(const QString& path, const ItemsOf& start, bool overwrite, IObserver* observer) {
    const values::ValueDescriptor* const items = start.descriptor != nullptr ? &start.descriptor() : nullptr;
    return values::ProvideValue<V>(path, start.index, items != nullptr ? items->SelItems() : nullptr,
                                   items != nullptr ? items->CountSelItems() : 0, overwrite, observer);
}

template <class Object, class V, class Path, class Start, class Stored>
QString PathOf(Object& object, const Field<Object, V, Path, Start, Stored>& row) {
    return std::invoke(row.path, object);
}

template <class Object, class V, class Path, class Start, class Stored>
void ProvideRow(Object& object, const Field<Object, V, Path, Start, Stored>& row, const QString& path,
                const wchar_t* sourcePath, bool overwrite, IObserver* observer) {
    V*& value = object.*row.member;
    if constexpr (std::is_invocable_v<Start, Object&>)
        value = Provide<V>(path, std::invoke(row.start, object), overwrite, observer);
    else
        value = Provide<V>(path, row.start, overwrite, observer);
    if (row.assertion != nullptr) AssertNotNull(value, row.assertion, sourcePath, row.line);
}

// What is not in the tree.

template <class Object, class Row>
QString PathOf(Object& /*object*/, const Row& /*row*/) {
    return QString();
}

template <class Object, class Row>
void ProvideRow(Object& /*object*/, const Row& /*row*/, const QString& /*path*/,
                const wchar_t* /*sourcePath*/, bool /*overwrite*/, IObserver* /*observer*/) {}

inline const Observable* AddressOf(const Observable* value) {
    return value;
}

}  // namespace detail

/// Calls \a visit with each row that has a \a place, in that order, until it returns false. True if it never
/// did.
template <class Table, int Places::*place, class Visit>
bool Walk(const Visit& visit) {
    constexpr std::size_t count = detail::CountPlaces<Table, place>();
    return detail::VisitByPlace<Table, place>(visit, std::make_index_sequence<count>());
}

/// Finds or creates the values of \a object, each with \a observer (may be null) attached, and asserts that
/// they are there, with \a sourcePath as the place. \a overwrite starts those anew that exist already.
template <class Table, class Object>
void Provide(Object& object, const wchar_t* sourcePath, bool overwrite, IObserver* observer) {
    const auto provide = [&](const auto&... row) {
        // All paths first: whoever hears of a value may delete the node by which others find theirs.
        const std::array<QString, sizeof...(row)> paths = {detail::PathOf(object, row)...};
        auto path = paths.begin();
        (detail::ProvideRow(object, row, *path++, sourcePath, overwrite, observer), ...);
    };
    std::apply(provide, Table::Rows);
}

/// Observes every value that is there, where they were provided without an observer.
template <class Table, class Object>
void AttachAll(Object& object, IObserver* self) {
    Walk<Table, &Places::lookedFor>([&](const auto& row) {
        if (object.*row.member != nullptr) (object.*row.member)->AddObserver(self);
        return true;
    });
}

/// True if \a source is one of the values.
template <class Table, class Object>
bool Contains(const Object& object, const Observable* source) {
    if (source == nullptr) return false;
    return !Walk<Table, &Places::lookedFor>(
        [&](const auto& row) { return detail::AddressOf(object.*row.member) != source; });
}

/// A change of state came from \a source: the first value that is the source, if it is going away, is
/// detached from and its pointer nulled.
template <class Table, class Object>
void ForgetIfGoingAway(Object& object, const Observable* source, IObserver* self) {
    if (source == nullptr) return;
    Walk<Table, &Places::lookedFor>([&](const auto& row) {
        auto*& value = object.*row.member;
        if (detail::AddressOf(value) != source) return true;
        if (value->GetState() == values::GoingAway) {
            value->DeleteObserver(self);
            value = nullptr;
        }
        return false;
    });
}

/// Detaches from every value that is still there and nulls its pointer.
template <class Table, class Object>
void DetachAll(Object& object, IObserver* self) {
    Walk<Table, &Places::lookedFor>([&](const auto& row) {
        auto*& value = object.*row.member;
        if (value != nullptr) value->DeleteObserver(self);
        value = nullptr;
        return true;
    });
}

/// Makes \a to use the values of \a from.
template <class Table, class Object>
void Share(Object& to, const Object& from) {
    Walk<Table, &Places::lookedFor>([&](const auto& row) {
        to.*row.member = from.*row.member;
        return true;
    });
}

}  // namespace fields
