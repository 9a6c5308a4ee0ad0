// SPDX-License-Identifier: Apache-2.0
#include <fuzz/compose.h>

#include <tests/platform/vtclient/anymessage.h>

#include <limits>

namespace compose {

namespace {

using vt::Content;
using vt::EItemKind;

EItemKind Kind(Script& script) {
    return static_cast<EItemKind>(script.Below(vt::ItemKindCount));
}

QVector<double> List(Script& script) {
    QVector<double> list;
    const unsigned count = script.Below(8);
    for (unsigned i = 0; i < count; ++i)
        list.append(script.Real());
    // Long ones are as long as a frame can bear, and longer.
    return count == 7 && script.Rarely() ? QVector<double>(static_cast<int>(script.Byte()) * 1000, 1.5)
                                         : list;
}

std::vector<vt::Choice> Choices(Script& script) {
    std::vector<vt::Choice> choices(script.Below(5));
    for (vt::Choice& choice : choices) {
        choice.text = script.Text();
        choice.number = script.Real();
        choice.key = script.SignedNumber();
    }
    return choices;
}

}  // namespace

Content ContentOf(EItemKind kind, Script& script) {
    switch (kind) {
        case EItemKind::Bool:
            return script.Flag();
        case EItemKind::Int:
        case EItemKind::NumericInt:
            return qint64{static_cast<int>(script.SignedNumber())};
        case EItemKind::Text:
            return script.Text();
        case EItemKind::NumericDouble:
            return script.Real();
        case EItemKind::Selection:
            if (script.Flag()) return std::monostate();
            return script.SignedNumber();
        case EItemKind::List:
            return List(script);
        case EItemKind::Node:
            break;
    }
    return std::monostate();
}

Content AnyContent(Script& script) {
    return ContentOf(Kind(script), script);
}

vt::ItemDescription Item(Script& script) {
    vt::ItemDescription item;
    item.kind = Kind(script);
    if (item.kind == EItemKind::Node) return item;
    item.flags = script.Below(vt::ItemDescription::AllFlags + 1);
    item.content = script.Rarely() ? AnyContent(script) : ContentOf(item.kind, script);
    if (item.kind == EItemKind::NumericInt || item.kind == EItemKind::NumericDouble) {
        item.minimum = ContentOf(item.kind, script);
        item.maximum = ContentOf(item.kind, script);
    }
    if (item.kind == EItemKind::Selection) item.choices = Choices(script);
    return item;
}

vt::TreeChange Change(quint32* next, Script& script) {
    vt::TreeChange change;
    change.change = static_cast<vt::EChange>(script.Below(6));
    change.id = static_cast<quint32>(script.Number());
    switch (change.change) {
        case vt::EChange::Added:
            change.parent = change.id;
            change.id = script.Rarely() ? static_cast<quint32>(script.Number()) : (*next)++;
            change.name = script.Name();
            change.item = Item(script);
            break;
        case vt::EChange::Described:
            change.name = script.Name();
            change.item = Item(script);
            break;
        case vt::EChange::Items:
            change.item.content = ContentOf(EItemKind::Selection, script);
            change.item.choices = Choices(script);
            break;
        case vt::EChange::Own:
            change.session = static_cast<int>(script.Below(4));
            change.item.content = AnyContent(script);
            break;
        case vt::EChange::Changed:
            change.item.content = AnyContent(script);
            break;
        case vt::EChange::Removed:
            break;
    }
    return change;
}

QByteArray MessageOfNumber(unsigned number, const Filling& filling) {
    if (number != 0 && number <= MessageCount) return ToBytes(Filled(number, filling));
    const char bytes[] = {'\x82', static_cast<char>(number), '\0'};
    return {bytes, sizeof bytes};
}

QByteArray Damaged(QByteArray message, Script& script) {
    const int at =
        message.isEmpty() ? 0 : static_cast<int>(script.Byte() * 256 + script.Byte()) % message.size();
    switch (script.Below(4)) {
        case 0:
            if (!message.isEmpty()) message[at] = static_cast<char>(script.Byte());
            break;
        case 1:
            message.truncate(at);
            break;
        case 2:
            message.insert(at, script.Bytes());
            break;
        default:
            message.remove(at, static_cast<int>(script.Below(16)));
            break;
    }
    return message;
}

}  // namespace compose
