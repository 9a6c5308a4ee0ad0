// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/valuebase.h>
#include <platform/vtclient/wire/content.h>

#include <array>
#include <cstddef>
#include <memory>

/// The one table from C++ types of values to their kinds and back: how each is made, read, set and described.
/// Nobody else asks what kind a value is in order to do something different with it.
namespace vt {

class CborOutput;

struct KindOperations {
    EItemKind kind;
    bool hasLimits;
    bool hasChoices;
    const char* name;  ///< for people
    /// A new value of this kind, detached and without a name.
    std::unique_ptr<values::ValueBase> (*create)();
    /// Appends the content (of a selection: the current index or null).
    void (*writeContent)(const values::ValueBase& value, CborOutput& output);
    /// Appends \a id, and then the same.
    void (*writeChange)(quint32 id, const values::ValueBase& value, CborOutput& output);
    /// Appends what follows the content in a description: nothing, limits, or the list of choices.
    void (*writeLimits)(const values::ValueBase& value, CborOutput& output);
    void (*writeChoices)(const values::ValueBase& value, CborOutput& output);
    Content (*content)(const values::ValueBase& value);
    /// Makes \a content what this kind holds of \a from, which may be the same. False, and \a content as it
    /// was, if that is nothing that this kind could hold. Numbers are assigned, which copying the variant
    /// would not do.
    bool (*take)(const Content& from, Content* content);
    /// Sets an accepted content. It is not looked at any more once anybody is told: it may be gone by then.
    void (*set)(values::ValueBase& value, const Content& content, IObserver* originator);
    /// Sets an accepted content as a write asks for it: for a selection by key. False, and nothing changed,
    /// if it has no such key.
    bool (*write)(values::ValueBase& value, const Content& content, IObserver* originator);
    /// Takes limits and choices from \a item, whose limits were accepted.
    void (*describe)(values::ValueBase& value, const ItemDescription& item, IObserver* originator);
    /// Reads limits and choices into \a item.
    void (*limits)(const values::ValueBase& value, ItemDescription* item);

    /// Converts \a held to what this kind holds. False if it is nothing that this kind could hold.
    bool Accept(Content* held) const { return take(*held, held); }
};

/// Those of the kinds that hold something, by their number.
extern const std::array<KindOperations, ItemKindCount - 1> ValueKinds;

/// Null for Node, which holds nothing.
inline const KindOperations* Operations(EItemKind kind) {
    return kind == EItemKind::Node ? nullptr : &ValueKinds[static_cast<std::size_t>(kind) - 1];
}
/// What kind \a item is; false for a type that does not travel.
bool KindOf(const values::TreeItem& item, EItemKind* kind);

/// An item of this description, detached, under \a name; null if its contents are not of its kind.
std::unique_ptr<values::TreeItem> MakeItem(const ItemDescription& item, const QString& name);
/// Whether \a item's content and limits are such as its kind can have; converts them to it.
bool AcceptItem(ItemDescription* item);
/// What \a item is, in the form that travels.
void DescribeItem(const values::TreeItem& item, ItemDescription* description);
/// Delivery and state as flags on the wire.
unsigned FlagsOf(const values::ValueBase& value);

}  // namespace vt
