// SPDX-License-Identifier: Apache-2.0
#include <fuzz/check.h>

#include <platform/values/treeitem.h>
#include <platform/vtclient/wire/changewriter.h>
#include <platform/vtclient/wire/itemkinds.h>
#include <platform/vtclient/wire/vtlimits.h>
#include <tests/platform/vtclient/anymessage.h>

#include <vector>

namespace {

struct Decoded {
    vt::Message message;
    std::vector<vt::TreeChange> changes;
};

bool Decode(const char* data, qint64 size, Decoded* decoded, QString* error) {
    vt::MessageReader reader(data, size);
    const bool isRead = ReadAny(reader, &decoded->message);
    vt::TreeChange change;
    while (isRead && vt::CarriesChanges(TypeOf(decoded->message)) && reader.NextChange(&change))
        decoded->changes.push_back(change);
    *error = reader.Error();
    Check(isRead || !error->isEmpty(), "what is refused has a reason");
    return error->isEmpty();
}

QByteArray ToBytes(const Decoded& decoded) {
    vt::ChangeWriter writer;
    for (const vt::TreeChange& change : decoded.changes)
        writer.Write(change);
    return ToBytes(decoded.message, writer.Take());
}

/// What is made of a description that came can be described, and the same is made of that.
void CheckItem(const vt::ItemDescription& item) {
    const QString name = QStringLiteral("name");
    const auto make = [&name](const vt::ItemDescription& description, vt::ItemDescription* made) {
        const std::unique_ptr<values::TreeItem> value = vt::MakeItem(description, name);
        vt::DescribeItem(*value, made);
        vt::ChangeWriter writer;
        writer.Added(1, 0, *value, made->kind, made->flags);
        return writer.Take();
    };
    vt::ItemDescription first;
    vt::ItemDescription second;
    const QByteArray bytes = make(item, &first);
    Check(make(first, &second) == bytes, "an item is described as what it is");
    Decoded decoded;
    QString error;
    const QByteArray message = ToBytes(vt::SnapshotMessage(), bytes);
    const bool isDecoded = Decode(message.constData(), message.size(), &decoded, &error);
    Check(isDecoded, "what was made of a description can be sent", error);
}

}  // namespace

/// The bytes are a message. What can be decoded must encode, and decode to the same again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Decoded decoded;
    QString error;
    if (!Decode(reinterpret_cast<const char*>(data), static_cast<qint64>(size), &decoded, &error)) return 0;
    const QByteArray encoded = ToBytes(decoded);
    Decoded again;
    const bool isDecoded = Decode(encoded.constData(), encoded.size(), &again, &error);
    Check(isDecoded, "what was decoded encodes to something that decodes", error);
    Check(ToBytes(again) == encoded, "and to the same");
    Check(again.changes.size() == decoded.changes.size(), "with all its changes");
    if (const auto* const create = std::get_if<vt::CreateMessage>(&decoded.message)) CheckItem(create->item);
    for (const vt::TreeChange& change : decoded.changes)
        if (change.change == vt::EChange::Added) CheckItem(change.item);
    return 0;
}
