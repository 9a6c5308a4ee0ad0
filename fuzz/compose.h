// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <fuzz/script.h>

#include <platform/vtclient/wire/messages.h>
#include <platform/vtclient/wire/treechange.h>
#include <tests/platform/vtclient/filledmessage.h>

/// Parts of messages as a script wants them.
namespace compose {

/// A content that a value of \a kind can have.
vt::Content ContentOf(vt::EItemKind kind, Script& script);
/// A content of any kind, right or wrong.
vt::Content AnyContent(Script& script);
/// An item, rarely with a content of another kind.
vt::ItemDescription Item(Script& script);
/// One change of a few low numbers; \a next is the number of the next item that is added, unless the script
/// wants another.
vt::TreeChange Change(quint32* next, Script& script);
/// Message \a number, if there is one of it, filled with \a filling.
QByteArray MessageOfNumber(unsigned number, const Filling& filling);
/// Damages \a message: a byte changed, some cut off at the end, or some put in.
QByteArray Damaged(QByteArray message, Script& script);

}  // namespace compose
