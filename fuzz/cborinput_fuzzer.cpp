// SPDX-License-Identifier: Apache-2.0
#include <fuzz/check.h>
#include <fuzz/qtmessagereader.h>

#include <platform/vtclient/wire/changewriter.h>
#include <platform/vtclient/wire/messagereader.h>
#include <tests/platform/vtclient/anymessage.h>

#include <vector>

namespace {

/// What somebody reads in a message.
struct Reading {
    bool isMessage = false;
    vt::Message message;
    QByteArray
        changes;    ///< written again: so every bit of a number counts, which comparing numbers would not
    int count = 0;  ///< of changes, until the end or something wrong
    QString error;
};

template <class Reader>
Reading Read(const char* data, qint64 size) {
    Reading reading;
    Reader reader(data, size);
    reading.isMessage = reader.Read([&reading](const auto& message) { reading.message = message; });
    if (reading.isMessage && vt::CarriesChanges(TypeOf(reading.message))) {
        vt::ChangeWriter writer;
        vt::TreeChange change;
        for (; reader.NextChange(&change); ++reading.count)
            writer.Write(change);
        reading.changes = writer.Take();
    }
    reading.error = reader.Error();
    return reading;
}

}  // namespace

/// The bytes are a message. The reader of messages and Qt's find the same in it, and the same wrong with it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto* const bytes = reinterpret_cast<const char*>(data);
    const auto ours = Read<vt::MessageReader>(bytes, static_cast<qint64>(size));
    const auto theirs = Read<QtMessageReader>(bytes, static_cast<qint64>(size));
    Check(ours.error == theirs.error, "the same is wrong",
          QStringLiteral("'%1' where Qt's finds '%2'").arg(ours.error, theirs.error));
    Check(ours.isMessage == theirs.isMessage, "both find a message or none");
    Check(ours.count == theirs.count, "both find as many changes");
    Check(ours.changes == theirs.changes, "both find the same changes");
    if (ours.isMessage) Check(ToBytes(ours.message) == ToBytes(theirs.message), "both find the same message");
    return 0;
}
