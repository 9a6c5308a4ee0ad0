// SPDX-License-Identifier: Apache-2.0
#include <fuzz/clientoperation.h>
#include <fuzz/serveroperation.h>

#include <platform/values/value.h>
#include <platform/values/valueselection.h>
#include <platform/vtclient/wire/changewriter.h>
#include <tests/platform/vtclient/anymessage.h>

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QVector>

#include <chrono>
#include <initializer_list>
#include <utility>

namespace {

using namespace std::chrono_literals;
using ClientOp = EClientOperation;
using ServerOp = EServerOperation;

QByteArray Bytes(std::initializer_list<int> bytes) {
    QByteArray array;
    for (const int byte : bytes)
        array.append(static_cast<char>(byte));
    return array;
}

template <class Operation>
QByteArray Step(Operation operation, std::initializer_list<int> parameters = {}) {
    return Bytes({static_cast<int>(operation)}) + Bytes(parameters);
}

void Write(const QString& folder, const char* name, const QByteArray& bytes) {
    QDir().mkpath(folder);
    QFile file(folder + QLatin1Char('/') + QLatin1String(name));
    if (file.open(QIODevice::WriteOnly)) file.write(bytes);
}

// Messages
// ---------------------------------------------------------------------------------------------------

QString S(const char* text) {
    return QString::fromUtf8(text);
}

/// Every change, about a value of every kind.
QByteArray AllChanges() {
    values::Value<bool> flag(true);
    values::Value<int> number(-5);
    values::Value<QString> text(S("\u00c4\u20ac\U0001f600"));
    values::ValueNumeric<int> limited(5, -10, 10);
    values::ValueNumeric<double> real(0.5, -1e9, 1e9);
    values::ValueSelection selection;
    selection.AddItem(S("One"), 1.0, 1);
    selection.AddItem(S("Two"), 2.5, 1000000);
    selection.Select(1);
    values::ValueList<double> list;
    list.SetItems({1.0, -2.5, 1e300});
    const std::pair<values::ValueBase*, vt::EItemKind> values[] = {
        {&flag, vt::EItemKind::Bool},          {&number, vt::EItemKind::Int},
        {&text, vt::EItemKind::Text},          {&limited, vt::EItemKind::NumericInt},
        {&real, vt::EItemKind::NumericDouble}, {&selection, vt::EItemKind::Selection},
        {&list, vt::EItemKind::List}};
    vt::ChangeWriter writer;
    quint32 id = 1;
    for (const auto& [value, kind] : values) {
        value->SetName(S("value"));
        writer.Added(id, 0, *value, kind, 0);
        writer.Changed(id, *value, kind);
        writer.Own(id, 3, *value, kind);
        writer.Described(id, *value, kind, vt::ItemDescription::AllFlags);
        ++id;
    }
    writer.Items(6, selection, vt::EItemKind::Selection);
    writer.Removed(7);
    return writer.Take();
}

void WriteMessages(const QString& folder) {
    const quint32 sub = 1;
    const quint64 seq = 2;
    const quint64 epoch = 0x123456789abcdef;
    const QString path = S("/MultiChannelServer/Status");
    const vt::Content content = QVector<double>{1.5, -2.0};
    const std::pair<const char*, vt::Message> messages[] = {
        {"hello", vt::HelloMessage{1, S("console"), S("host"), S("operator"), S("secret")}},
        {"welcome", vt::WelcomeMessage{1, S("console"), 3, epoch, 5000ms, 15000ms}},
        {"bye", vt::ByeMessage{vt::EBye::Malformed, S("no room")}},
        {"subscribe", vt::SubscribeMessage{sub, path}},
        {"unsubscribe", vt::UnsubscribeMessage{sub}},
        {"subscribed", vt::SubscribedMessage{sub, QStringList{S("/MultiChannelServer"), S("/Gui")}}},
        {"end", vt::EndMessage{sub, seq, epoch}},
        {"absent", vt::AbsentMessage{sub, S("no room")}},
        {"ack", vt::AckMessage{seq}},
        {"write", vt::WriteMessage{7, sub, 4, content}},
        {"answer", vt::AnswerMessage{7, vt::EResult::Done, S("no room"), {}}},
        {"answer-clamped", vt::AnswerMessage{7, vt::EResult::Clamped, S("no room"), content}},
        {"ping", vt::PingMessage{seq}},
        {"pong", vt::PongMessage{seq}},
        {"recall", vt::RecallMessage{7, path, seq, 100}},
        {"recalled",
         vt::RecalledMessage{7, vt::EResult::Done, {}, seq, QStringList{S("first"), S("second")}}},
        {"join", vt::JoinMessage{sub}},
        {"road", vt::RoadMessage{sub, S("1f-1"), 1, QString(64, QLatin1Char('5'))}},
        {"heard", vt::HeardMessage{sub, S("1f-1")}},
        {"at", vt::AtMessage{sub, seq}},
        {"leave", vt::LeaveMessage{sub}},
        {"again", vt::AgainMessage{sub, seq, seq + 1}}};
    for (const auto& [name, message] : messages)
        Write(folder, name, ToBytes(message));
    vt::CreateMessage create{7, sub, path, {}};
    create.item.kind = vt::EItemKind::List;
    create.item.content = content;
    Write(folder, "create-list", ToBytes(create));
    create.item.kind = vt::EItemKind::NumericInt;
    create.item.content = create.item.minimum = create.item.maximum = qint64{5};
    Write(folder, "create-number", ToBytes(create));
    Write(folder, "snapshot", ToBytes(vt::SnapshotMessage{sub, seq}, AllChanges()));
    Write(folder, "batch", ToBytes(vt::BatchMessage{sub, seq, false}, AllChanges()));
}

/// Elements in every form that they can have, in batches mostly.
void WriteElements(const QString& folder) {
    const std::pair<const char*, const char*> batches[] = {
        {"numbers-of-all-widths",
         "9f090101f4 00 17 18ff 19ffff 1a7fffffff 1b7fffffffffffffff 01 20 02 38ff 03 3b7fffffffffffffff ff"},
        {"integers-out-of-range", "9f090101f4 00 1b8000000000000000 00 3b8000000000000000 ff"},
        {"floats-of-all-widths",
         "9f090101f4 00 f93c00 01 fa3fc00000 02 fb3ff8000000000000 03 f97e00 04 faffc00001 ff"},
        {"other-contents", "9f090101f4 00 f4 01 f5 02 f6 03 82 f93c00 05 04 9f fb3ff8000000000000 ff ff"},
        {"batch-of-definite-length", "89 09 01 01 f4 00 01 01 20 1affffffff"},
        {"ids-out-of-range", "9f090101f4 1b0000000100000000 01 ff"},
        {"texts",
         "9f090101f4 00 61 61 01 62 c3a4 02 7f 61 61 60 62 c3a4 ff 03 63 efbbbf 04 78 05 6162636465 ff"},
        {"text-that-is-not-utf8", "9f090101f4 00 62 c328 ff"},
        {"text-in-parts-that-are-not-utf8", "9f090101f4 00 7f 61 c3 61 a4 ff ff"},
        {"text-longer-than-all", "9f090101f4 00 7b7fffffffffffffff 61"},
        {"break-for-a-content", "9f090101f4 00 ff"},
        {"nothing-behind-a-number", "9f090101f4 00 01"},
        {"reserved-behind-a-number", "9f090101f4 00 01 1c ff"},
        {"simple-values", "9f090101f4 00 f7 ff"},
        {"simple-value-in-two-bytes", "9f090101f4 00 f814 ff"},
        {"changes-wrapped",
         "9f070101 84 00 00 00 60 00 87 00 01 00 61 61 02 00 05 9f 01 01 ff 9f 04 01 03 07 ff 00 07 ff"},
    };
    for (const auto& [name, hex] : batches)
        Write(folder, name, QByteArray::fromHex(hex));
}

void WriteWriting(const QString& folder) {
    QByteArray all;
    for (int element = 0; element < 8; ++element)
        all += Bytes({element, 1, 2, 3, 4, 5, 6, 7, 8, 9, 3, 0, 0});
    Write(folder, "all", all);
    Write(folder, "numbers",
          Bytes({0, 255, 255, 255, 255, 255, 255, 255, 255, 40}) + Bytes({1, 0, 0, 0, 0, 0, 0, 0, 128, 0}) +
              Bytes({1, 255, 255, 255, 255, 255, 255, 255, 255, 0}) + Bytes({0, 24, 0, 0, 0, 0, 0, 0, 0, 0}) +
              Bytes({0, 0, 1, 0, 0, 0, 0, 0, 0, 0}));
    Write(folder, "texts",
          Bytes({5, 2, 0x3d, 0xd8, 0x00, 0xde}) + Bytes({5, 1, 0x3d, 0xd8}) + Bytes({6, 3, 97, 98, 99, 2}) +
              Bytes({6, 255}) + QByteArray(255, 'x') + Bytes({3}));
}

// Scripts
// ---------------------------------------------------------------------------------------------------- A
// parameter is 0 for what is usual. See Script, treeedits::Edit and compose for what each byte means.

/// An integer "n", a text "t", a selection and a list below /S or /L.
QByteArray SomeItems(int edit) {
    const QByteArray add = Bytes({edit, 1});
    return add + Bytes({3, 2, 0, 0, 7, 0}) +                                  // n: int
           add + Bytes({4, 3, 0, 0, 1, 0}) +                                  // t: text
           add + Bytes({100, 6, 0, 0, 1, 2, 1, 0, 5, 1, 0, 1, 1, 6, 2, 0}) +  // selection of two
           add + Bytes({101, 7, 1, 0, 2, 1, 2}) +                             // list, every change counts
           add + Bytes({0, 4, 0, 0, 5, 0, 0, 0, 200, 0});                     // a: int with limits
}

QByteArray ServerStart() {
    return Bytes({1, 3, 2, 0, 0, 7, 0}) + SomeItems(static_cast<int>(ServerOp::Edit)) +
           Step(ServerOp::Connect) + Step(ServerOp::SendHello, {0, 1, 0, 1, 1}) +
           Step(ServerOp::SendSubscribe, {0, 0}) + Step(ServerOp::Deliver);
}

void WriteServerScripts(const QString& folder) {
    const QByteArray start = ServerStart();
    const QByteArray settle = Step(ServerOp::Settle);
    const QByteArray set = Step(ServerOp::Edit, {0, 1, 9, 0});
    const QByteArray addMany = Step(ServerOp::Edit, {3, 0, 15, 70, 0, 1});
    Write(folder, "follow",
          start + settle + set + Step(ServerOp::Turn) + Step(ServerOp::Receive) + set + settle);
    Write(folder, "write",
          start + settle + Step(ServerOp::SendWrite, {5, 0, 0, 1, 2, 9, 0}) + Step(ServerOp::Deliver) +
              Step(ServerOp::SendWrite, {6, 0, 0, 3, 6, 0, 1, 0}) + settle);
    Write(folder, "create",
          start + settle + Step(ServerOp::SendCreate, {7, 0, 0, 0, 1, 90, 3, 0, 0, 1}) + settle);
    Write(folder, "come-and-go",
          start + settle + Step(ServerOp::Edit, {2, 1}) + settle + Step(ServerOp::Edit, {2, 0}) + settle +
              Step(ServerOp::Edit, {1, 3, 2, 0, 0, 7, 0}) + settle);
    Write(folder, "lag",
          start + addMany + Step(ServerOp::Turn) + set + Step(ServerOp::Turn) + Step(ServerOp::Turn) +
              Step(ServerOp::Receive) + Step(ServerOp::SendAck, {0}) + Step(ServerOp::Deliver) + set +
              settle);
    Write(folder, "two-clients",
          start + settle + Step(ServerOp::Connect) + Step(ServerOp::SendHello, {0, 0, 0}) +
              Step(ServerOp::SendSubscribe, {0, 1, 0}) + Step(ServerOp::Deliver) + set +
              Step(ServerOp::Turn) + Step(ServerOp::Switch, {0}) + Step(ServerOp::Receive) +
              Step(ServerOp::Cut) + set + settle);
    Write(folder, "slow-turns",
          start + Step(ServerOp::Slow, {5}) + addMany + addMany + Step(ServerOp::Turn) + set +
              Step(ServerOp::Turn) + settle);
    Write(folder, "long-text",
          start + settle + Step(ServerOp::Edit, {0, 2, 255, 9}) + settle +
              Step(ServerOp::Edit, {0, 2, 1, 0}) + settle);
    Write(folder, "reaction", start + settle + Step(ServerOp::Arm, {1}) + set + Bytes({4, 2, 1}) + settle);
    Write(folder, "silence",
          start + settle + Step(ServerOp::Pass, {255}) + Step(ServerOp::Turn) + Step(ServerOp::Pass, {255}) +
              settle);
    const QByteArray onRoad = start + settle + Step(ServerOp::SendJoin, {0, 0}) + settle +
                              Step(ServerOp::SendHeard, {0, 0}) + settle;
    Write(folder, "road", onRoad + set + settle + Step(ServerOp::Edit, {2, 1}) + settle);
    Write(folder, "road-with-a-write",
          onRoad + set + Step(ServerOp::SendWrite, {5, 0, 0, 1, 2, 9, 0}) + settle);
    Write(folder, "road-left", onRoad + set + settle + Step(ServerOp::SendLeave, {0, 0}) + set + settle);
    Write(folder, "road-said-again",
          onRoad + set + settle + Step(ServerOp::SendAgain, {0, 0, 1, 9}) + settle);
    Write(folder, "road-with-another-key", onRoad + set + Step(ServerOp::ChangeKeys) + set + settle);
    Write(folder, "road-of-what-goes",
          onRoad + set + Step(ServerOp::Edit, {2, 0}) + settle + Step(ServerOp::Edit, {1, 3, 2, 0, 0, 7, 0}) +
              settle);
    Write(folder, "damage",
          start + settle + Step(ServerOp::Damage) +
              Step(ServerOp::SendWrite, {5, 0, 0, 1, 2, 9, 0, 0, 3, 0, 66}) + settle);
}

QByteArray ClientStart() {
    return Step(ClientOp::Turn) + Step(ClientOp::Connect, {0}) + Step(ClientOp::Receive) +
           Step(ClientOp::SendWelcome, {0, 0, 227, 228}) + Step(ClientOp::Deliver) + Step(ClientOp::Receive);
}

/// A node with an integer 1 "n", a text 2 "t", a node 3 "b", a list 4 in it, and a selection 5.
QByteArray Whole() {
    return Step(ClientOp::SendWhole, {0, 0, 0, 5}) + Bytes({0, 3, 2, 0, 0, 7, 0}) +
           Bytes({0, 4, 3, 0, 0, 1, 0}) + Bytes({0, 1, 0}) + Bytes({3, 101, 7, 1, 0, 2, 1, 2}) +
           Bytes({0, 100, 6, 0, 0, 1, 2, 1, 0, 5, 1, 0, 1, 1, 6, 2, 0}) + Step(ClientOp::Deliver);
}

void WriteClientScripts(const QString& folder) {
    const QByteArray start = ClientStart() + Whole();
    const QByteArray settle = Step(ClientOp::Settle);
    const QByteArray set = Step(ClientOp::Edit, {0, 1, 9, 0});
    const QByteArray change =
        Step(ClientOp::SendBatch, {0, 0, 1}) + Bytes({5, 1, 2, 8, 0}) + Step(ClientOp::Deliver);
    const QByteArray answer = Step(ClientOp::SendAnswer, {0, 0, 1, 0, 2, 9, 0}) + Step(ClientOp::Deliver);
    Write(folder, "follow", start + change + change + settle);
    Write(folder, "edit", start + set + settle + answer + settle);
    Write(folder, "denied",
          start + set + settle + Step(ClientOp::SendAnswer, {0, 2, 1, 0, 2, 9, 0}) + settle);
    Write(folder, "clamped",
          start + set + settle + Step(ClientOp::SendAnswer, {0, 1, 1, 0, 2, 6, 0}) + settle);
    Write(folder, "create",
          start + Step(ClientOp::Edit, {1, 90, 2, 0, 0, 7, 0}) + settle + answer +
              Step(ClientOp::SendBatch, {0, 0, 1}) + Bytes({0, 0, 0, 90, 2, 0, 0, 7, 0}) + settle);
    Write(folder, "delete",
          start + Step(ClientOp::Edit, {2, 1}) + change + Step(ClientOp::Edit, {2, 0}) + change);
    Write(folder, "local-first", SomeItems(static_cast<int>(ClientOp::Edit)) + start + settle + change);
    Write(folder, "come-back",
          start + set + Step(ClientOp::Cut) + settle + set + Step(ClientOp::Pass, {2}) + start + settle +
              change);
    Write(folder, "tics",
          start + Step(ClientOp::AddTic, {2}) + settle + Whole() + Step(ClientOp::RemoveTic, {0}) + change +
              Step(ClientOp::ReleaseNode, {2}) + change);
    Write(folder, "reaction", start + Step(ClientOp::Arm, {2}) + change + Bytes({0, 0}) + settle);
    Write(folder, "vanish",
          start + Step(ClientOp::SendAbsent, {0, 0}) + Step(ClientOp::Deliver) + Whole() + change);
    const QByteArray onRoad = Step(ClientOp::UseRoads, {0}) + start + Step(ClientOp::Receive) +
                              Step(ClientOp::OfferRoad, {0, 0}) + Step(ClientOp::Deliver) +
                              Step(ClientOp::PublishOnRoad, {0, 0}) + Step(ClientOp::DeliverRoad, {0, 0, 0}) +
                              Step(ClientOp::Receive) + Step(ClientOp::SendAt, {0, 0}) +
                              Step(ClientOp::Deliver);
    const QByteArray changeOnRoad = Step(ClientOp::PublishOnRoad, {1}) + Bytes({5, 1, 2, 8, 0, 0});
    Write(folder, "road", onRoad + changeOnRoad + changeOnRoad + settle);
    Write(folder, "road-with-an-edit",
          onRoad + set + settle + changeOnRoad + settle + Step(ClientOp::SendAt, {0, 0}) + answer + settle);
    Write(folder, "road-with-a-loss",
          onRoad + changeOnRoad + Step(ClientOp::DeliverRoad, {0, 0, 240, 0}) + changeOnRoad + changeOnRoad +
              settle + Step(ClientOp::Pass, {10}) + settle + Step(ClientOp::Pass, {255}) + settle + Whole());
    Write(folder, "road-that-is-kept",
          Step(ClientOp::ForgetKept, {1, 0}) + onRoad + changeOnRoad +
              Step(ClientOp::DeliverRoad, {0, 0, 240, 0}) + changeOnRoad + settle +
              Step(ClientOp::Pass, {10}) + settle + Step(ClientOp::Pass, {30}) + settle);
    Write(folder, "road-and-a-stranger",
          onRoad + changeOnRoad + Step(ClientOp::StrangeOnRoad, {0, 0, 0, 40, 0, 77}) +
              Step(ClientOp::ChangeRoadKey) + changeOnRoad + settle + Step(ClientOp::OfferRoad, {0, 0}) +
              settle);
    Write(folder, "missed",
          start + Step(ClientOp::SendRaw, {0, 9, 9, 0, 0, 0, 1}) + settle + Whole() + change);
}

// Answers of modules
// ---------------------------------------------------------------------------------------------------

void WriteModbusAnswers(const QString& folder) {
    // Transaction 0x1234 to unit 1, function 2, twelve inputs; and six coils of unit 255.
    const QByteArray twelve = Bytes({0x12, 0x34, 1, 1, 11});
    const QByteArray six = Bytes({0x12, 0x34, 255, 0, 5});
    Write(folder, "twelve-inputs", twelve + Bytes({0x12, 0x34, 0, 0, 0, 5, 1, 2, 2, 0x81, 0x0A}));
    Write(folder, "six-coils", six + Bytes({0x12, 0x34, 0, 0, 0, 4, 255, 1, 1, 0x2A}));
    Write(folder, "states-beyond-the-last-input", six + Bytes({0x12, 0x34, 0, 0, 0, 4, 255, 1, 1, 0x6A}));
    Write(folder, "exception", twelve + Bytes({0x12, 0x34, 0, 0, 0, 3, 1, 0x82, 6}));
    Write(folder, "previous-transaction", twelve + Bytes({0x12, 0x33, 0, 0, 0, 5, 1, 2, 2, 0x81, 0x0A}));
    Write(folder, "question", twelve + Bytes({0x12, 0x34, 0, 0, 0, 6, 1, 2, 0, 0, 0, 12}));
    Write(folder, "byte-count-is-believed", twelve + Bytes({0x12, 0x34, 0, 0, 0, 5, 1, 2, 255, 0x81, 0x0A}));
}

}  // namespace

/// Writes the inputs from which the fuzzers start into the folder given.
int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const QString folder = QString::fromLocal8Bit(argv[1]);
    WriteMessages(folder + QStringLiteral("/codec_fuzzer"));
    WriteMessages(folder + QStringLiteral("/cborinput_fuzzer"));
    WriteElements(folder + QStringLiteral("/cborinput_fuzzer"));
    WriteWriting(folder + QStringLiteral("/cboroutput_fuzzer"));
    WriteServerScripts(folder + QStringLiteral("/server_session_fuzzer"));
    WriteClientScripts(folder + QStringLiteral("/client_session_fuzzer"));
    WriteModbusAnswers(folder + QStringLiteral("/modbus_answer_fuzzer"));
    return 0;
}
