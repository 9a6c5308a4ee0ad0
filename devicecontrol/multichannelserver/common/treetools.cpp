// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/treetools.h>

#include <platform/app/errorhandler.h>
#include <platform/values/node.h>
#include <platform/values/valuebase.h>

#include <cstdint>

namespace {

/// What traces and assertions name as their place. (fixed: trace-places)
constexpr const wchar_t* TreeToolsPlace = L"devicecontrol/multichannelserver/common/treetools";

void Trace(const char* format, const values::TreeItem& item, const void* address, int line) {
    if (!ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings)) return;
    // Eight digits, which is what a 32-bit address has. (fixed: addresses-of-32-bits)
    const auto shown = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(address));
    _Q_Trace(QString::asprintf(format, qUtf8Printable(item.GetPathName()), shown), TreeToolsPlace, line);
}

void TraceAddress(values::TreeItem& item) {
    if (item.IsNode())
        Trace("%s: (Node *)0x%08x", item, static_cast<values::Node*>(&item), 52);
    else if (const auto* const value = dynamic_cast<values::ValueBase*>(&item))
        Trace("%s: (ValueItem *)0x%08x", item, value, 61);
}

/// The item after \a item, children first, within what is below \a top; null after the last one.
values::TreeItem* Next(values::TreeItem* item, const values::TreeItem* top) {
    if (item->IsNode()) {
        if (values::TreeItem* const child = static_cast<values::Node*>(item)->GetFirstChild()) return child;
    }
    for (; item != nullptr && item != top; item = item->GetParent()) {
        if (values::TreeItem* const sibling = item->GetNextSibling()) return sibling;
    }
    return nullptr;
}

}  // namespace

values::Node* TreeTools::DeepCopyOf(const values::Node* source) {
    return source != nullptr ? source->DeepCopy() : nullptr;
}

// A loop, not a recursion: a tree may be deeper than the stack.
void TreeTools::DebugPrintTreeItemAddr(values::TreeItem* item) {
    for (values::TreeItem* next = item; next != nullptr; next = Next(next, item))
        TraceAddress(*next);
}
