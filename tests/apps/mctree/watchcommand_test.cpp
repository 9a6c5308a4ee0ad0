// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mctree/commandfixture.h>

#include <QtCore/QRegularExpression>

using namespace mctree;

namespace {

class WatchCommandTest : public CommandFixture {
  protected:
    void SetUp() override {
        client.application = QStringLiteral("mcserver");
        values::Node& status = AddNode(Server(), "Status");
        Add(status, "SweepTime", new values::ValueNumeric<int>(1, 0, 5000));
        Add(status, "Comment", new values::Value<QString>());
        auto* const mode = new values::ValueSelection();
        mode->AddItem(QStringLiteral("Idle"), 0, 0);
        mode->AddItem(QStringLiteral("Scan"), 0, 4);
        Add(status, "Mode", mode);
        Add(status, "List", new values::ValueList<double>());
    }

    /// Watches, with the words \a more, and lets \a changes happen once the watch has begun.
    Outcome Watch(const QStringList& more, std::function<void()> changes) {
        onWrite = [this, changes = std::move(changes)] {
            if (writes == 1) client.Soon(changes);
        };
        return RunConnected(Words({"watch", "--changes-only"}) + more);
    }
    /// The lines without their time stamps, and without the first, which tells of the connection.
    QStringList Changes() const {
        QStringList changes = Lines().mid(1);
        for (QString& line : changes)
            line = line.mid(QStringLiteral("2026-11-20 05:47:24.123  ").size());
        return changes;
    }
    QList<QJsonObject> Objects() const {
        QList<QJsonObject> objects;
        for (const QString& line : Lines())
            objects += QJsonDocument::fromJson(line.toUtf8()).object();
        return objects;
    }
    values::ValueNumeric<int>& SweepTime() { return Local<values::ValueNumeric<int>>("SweepTime"); }
    values::Value<QString>& Comment() { return Local<values::Value<QString>>("Comment"); }
    values::ValueSelection& Mode() { return Local<values::ValueSelection>("Mode"); }
    values::Node& Status() { return Local<values::Node>(""); }
};

TEST_F(WatchCommandTest, EveryChangeIsALineWithItsTime) {
    EXPECT_TRUE(Watch(Words({"/Status", "--count", "3"}), [this] {
                    SweepTime().SetValue(2500);
                    Comment().SetValue(QStringLiteral("x\x1b[2J"));
                    SweepTime().SetValue(3);
                }).IsDone());
    EXPECT_EQ(Changes(), Words({"/Status/SweepTime = 2.5 ms", "/Status/Comment   = x\\x1b[2J",
                                "/Status/SweepTime = 3 us"}));
    const QRegularExpression time(QStringLiteral("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}  "));
    for (const QString& line : Lines())
        EXPECT_TRUE(time.match(line).hasMatch()) << line.toStdString();
    EXPECT_EQ(writes, 4);  // each at once
}

TEST_F(WatchCommandTest, TheFirstLineTellsThatTheWatchHasBegun) {
    Watch(Words({"/Status", "--count", "1"}), [this] { SweepTime().SetValue(2); });
    EXPECT_TRUE(Lines().value(0).endsWith(QStringLiteral("-- connected to mcserver at example:7450 --")));
}

TEST_F(WatchCommandTest, SeveralPathsAreWatched) {
    EXPECT_TRUE(Watch(Words({"/Status/SweepTime", "/Status/Comment", "--count", "2"}), [this] {
                    Local<values::Value<QString>>("", 1).SetValue(QStringLiteral("a"));
                    Local<values::ValueNumeric<int>>("", 0).SetValue(2);
                }).IsDone());
    EXPECT_EQ(Changes(), Words({"/Status/Comment = a", "/Status/SweepTime = 2 us"}));
}

TEST_F(WatchCommandTest, DescriptionsAndItemsAreToldInWords) {
    Watch(Words({"/Status", "--count", "5"}), [this] {
        SweepTime().SetMax(2000);
        Comment().SetWritable(false);
        Comment().SetWritable(true);
        Mode().AddItem(QStringLiteral("Nap"), 0, 5);
        Mode().Select(4);
    });
    EXPECT_EQ(Changes(), Words({"/Status/SweepTime is now 0 us .. 2 ms", "/Status/Comment   is now read-only",
                                "/Status/Comment   is described anew",
                                "/Status/Mode      has the items Idle (0), Scan (4), Nap (5)",
                                "/Status/Mode      = Scan"}));
}

TEST_F(WatchCommandTest, AListIsItsContent) {
    Watch(Words({"/Status", "--count", "1"}), [this] {
        Local<values::ValueList<double>>("List").SetItems({1, 2});
    });
    EXPECT_EQ(Changes(), Words({"/Status/List = 1, 2"}));
}

TEST_F(WatchCommandTest, WhatComesAndGoesIsTold) {
    Watch(Words({"/Status", "--count", "5"}), [this] {
        values::Node& added = AddNode(Status(), "New");
        Add(added, "Online", new values::Value<bool>(true)).SetValue(false);
        tree.Delete(&added);
        tree.Delete(&Comment());
    });
    EXPECT_EQ(Changes(),
              Words({"/Status/New added", "/Status/New/Online added = true", "/Status/New/Online = false",
                     "/Status/New        removed", "/Status/Comment    removed"}));
}

TEST_F(WatchCommandTest, WhatComesAsAWholeIsToldItemByItem) {
    Watch(Words({"/Status", "--count", "3"}), [this] {
        std::unique_ptr<values::TreeItem> whole = std::make_unique<values::Node>(QStringLiteral("New"));
        auto& node = static_cast<values::Node&>(*whole);
        Add(node, "a", new values::Value<int>(1));
        Add(node, "b", new values::Value<int>(2));
        Status().AddChild(whole);
    });
    EXPECT_EQ(Changes(), Words({"/Status/New added", "/Status/New/a added = 1", "/Status/New/b added = 2"}));
}

TEST_F(WatchCommandTest, ALostConnectionIsOneLineAndSoIsItsReturn) {
    client.lastError = QStringLiteral("it went\aaway");
    Watch(Words({"/Status", "--count", "1"}), [this] {
        client.Disconnect();
        client.Soon([this] {
            client.Connect();
            client.Soon([this] { SweepTime().SetValue(2); });
        });
    });
    EXPECT_EQ(Changes(), Words({"-- connection lost: it went\\x07away --",
                                "-- connected to mcserver at example:7450 --", "/Status/SweepTime = 2 us"}));
}

TEST_F(WatchCommandTest, WhatWasLostAlthoughTheConnectionHeldIsOneLine) {
    Watch(Words({"/Status", "--count", "1"}), [this] {
        client.Miss({QStringLiteral("/Status"), QDateTime({2026, 11, 22}, {14, 3, 5, 7}),
                     QDateTime({2026, 11, 22}, {14, 3, 8}), true});
        client.Soon([this] { SweepTime().SetValue(2); });
    });
    EXPECT_EQ(Changes(), Words({"-- lost: what happened at /Status from 2026-11-22 14:03:05.007 to "
                                "2026-11-22 14:03:08.000 --",
                                "/Status/SweepTime = 2 us"}));
}

TEST_F(WatchCommandTest, WhatWasLostWithTheConnectionIsToldByItsOwnLines) {
    Watch(Words({"/Status", "--count", "1"}), [this] {
        client.Miss({QStringLiteral("/Status"), QDateTime::currentDateTimeUtc(),
                     QDateTime::currentDateTimeUtc(), false});
        client.Soon([this] { SweepTime().SetValue(2); });
    });
    EXPECT_EQ(Changes(), Words({"/Status/SweepTime = 2 us"}));
}

TEST_F(WatchCommandTest, JsonTellsWhatWasLost) {
    Watch(Words({"/Status", "--count", "1", "--json"}), [this] {
        client.Miss({QStringLiteral("/Status"), QDateTime({2026, 11, 22}, {14, 3, 5, 7}, Qt::UTC),
                     QDateTime({2026, 11, 22}, {14, 3, 8}, Qt::UTC), true});
        client.Soon([this] { SweepTime().SetValue(2); });
    });
    const QJsonObject lost = Objects().value(1);
    EXPECT_EQ(lost[QStringLiteral("event")].toString(), QStringLiteral("lost"));
    EXPECT_EQ(lost[QStringLiteral("path")].toString(), QStringLiteral("/Status"));
    EXPECT_EQ(lost[QStringLiteral("from")].toString(), QStringLiteral("2026-11-22T14:03:05.007Z"));
    EXPECT_EQ(lost[QStringLiteral("until")].toString(), QStringLiteral("2026-11-22T14:03:08.000Z"));
}

TEST_F(WatchCommandTest, WhatTheServerCallsStaleIsTold) {
    onWrite = [this] {
        if (writes == 1) client.Soon([this] { SweepTime().SetState(values::Stale); });
        if (writes == 2) client.Soon([this] { SweepTime().SetState(values::Valid); });
    };
    RunConnected(Words({"watch", "/Status", "--count", "2", "--changes-only"}));
    EXPECT_EQ(Changes(), Words({"/Status/SweepTime is stale", "/Status/SweepTime is valid again"}));
}

TEST_F(WatchCommandTest, WhatGoesAsAWholeMayComeBack) {
    Watch(Words({"/Status/SweepTime", "--count", "3"}), [this] {
        tree.Delete(&Local<values::ValueNumeric<int>>(""));
        client.Connect();  // the mirror is set up anew
        Local<values::ValueNumeric<int>>("").SetValue(2);
    });
    EXPECT_EQ(Changes(), Words({"/Status/SweepTime removed", "/Status/SweepTime added = 1 us",
                                "/Status/SweepTime = 2 us"}));
}

TEST_F(WatchCommandTest, EndsWhenItIsInterrupted) {
    client.Connect();
    isInterrupted = true;
    EXPECT_TRUE(Run(Words({"watch", "/Status", "--changes-only"})).IsDone());
    EXPECT_EQ(Lines().size(), 1);
}

TEST_F(WatchCommandTest, EndsQuietlyWhenTheOutputIsClosed) {
    const Outcome outcome = Watch(Words({"/Status"}), [this] {
        isOutputOpen = false;
        SweepTime().SetValue(2);
        SweepTime().SetValue(3);
    });
    EXPECT_TRUE(outcome.IsDone());
    EXPECT_EQ(outcome.message, QString());
    EXPECT_EQ(writes, 2);
}

TEST_F(WatchCommandTest, JsonIsOneObjectALine) {
    Watch(Words({"/Status", "--count", "4", "--json"}), [this] {
        SweepTime().SetValue(2500);
        Mode().Select(4);
        Add(Status(), "New", new values::Value<bool>(true));
        tree.Delete(&Comment());
    });
    const QList<QJsonObject> objects = Objects();
    ASSERT_EQ(objects.size(), 5);
    QStringList events;
    for (const QJsonObject& object : objects) {
        events += object[QStringLiteral("event")].toString();
        EXPECT_TRUE(
            QDateTime::fromString(object[QStringLiteral("time")].toString(), Qt::ISODateWithMs).isValid());
        EXPECT_TRUE(object[QStringLiteral("time")].toString().endsWith(QLatin1Char('Z')));
    }
    EXPECT_EQ(events, Words({"connected", "content", "content", "added", "removed"}));
    EXPECT_EQ(objects[1][QStringLiteral("path")].toString(), QStringLiteral("/Status/SweepTime"));
    EXPECT_EQ(objects[1][QStringLiteral("content")].toInt(), 2500);
    EXPECT_EQ(objects[2][QStringLiteral("key")].toInt(), 4);
    EXPECT_EQ(objects[3][QStringLiteral("kind")].toString(), QStringLiteral("boolean"));
    EXPECT_EQ(objects[4][QStringLiteral("path")].toString(), QStringLiteral("/Status/Comment"));
}

TEST_F(WatchCommandTest, JsonTellsOfTheConnection) {
    client.lastError = QStringLiteral("gone");
    Watch(Words({"/Status", "--count", "1", "--json"}), [this] {
        client.Disconnect();
        client.Connect();
        SweepTime().SetValue(2);
    });
    const QList<QJsonObject> objects = Objects();
    ASSERT_EQ(objects.size(), 4);
    EXPECT_EQ(objects[1][QStringLiteral("event")].toString(), QStringLiteral("disconnected"));
    EXPECT_EQ(objects[1][QStringLiteral("reason")].toString(), QStringLiteral("gone"));
    EXPECT_EQ(objects[2][QStringLiteral("event")].toString(), QStringLiteral("connected"));
}

/// A watch as people begin one.
class WatchFromTheStartTest : public WatchCommandTest {
  protected:
    void SetUp() override {
        Add(Server(), "Online", new values::Value<bool>(true));
        WatchCommandTest::SetUp();
        isInterrupted = true;
        client.Connect();
    }
};

TEST_F(WatchFromTheStartTest, BeginsWithWhatThereIs) {
    EXPECT_TRUE(Run(Words({"watch", "/Status"})).IsDone());
    EXPECT_EQ(Changes(), Words({"/Status/SweepTime = 1 us", "/Status/Comment   = ",
                                "/Status/Mode      = (none)", "/Status/List      = "}));
}

TEST_F(WatchFromTheStartTest, WhatThereIsDoesNotCountAsAChange) {
    onWrite = [this] {
        isInterrupted = false;
        if (writes == 2) client.Soon([this] { SweepTime().SetValue(2); });
    };
    isInterrupted = false;
    EXPECT_TRUE(Run(Words({"watch", "/Status", "--count", "1"})).IsDone());
    EXPECT_EQ(Changes().last(), QStringLiteral("/Status/SweepTime = 2 us"));
}

TEST_F(WatchFromTheStartTest, OfAPatternOnlyWhatMatches) {
    EXPECT_TRUE(Run(Words({"watch", "/Status/*e", "/Online"})).IsDone());
    EXPECT_EQ(Changes(),
              Words({"/Status/SweepTime = 1 us", "/Status/Mode      = (none)", "/Online           = true"}));
}

TEST_F(WatchFromTheStartTest, WhatTwoPathsNameIsToldOnce) {
    EXPECT_TRUE(Run(Words({"watch", "/Status/S*", "/Status", "/Status/SweepTime"})).IsDone());
    EXPECT_EQ(Changes().filter(QStringLiteral("SweepTime")).size(), 1);
    EXPECT_EQ(Changes().size(), 4);
}

TEST_F(WatchFromTheStartTest, WhatIsNotThereIsWaitedFor) {
    EXPECT_TRUE(Run(Words({"watch", "/Later", "/Online"})).IsDone());
    EXPECT_EQ(Changes(), Words({"/Online = true", "-- /Later is not there yet --"}));
}

TEST_F(WatchFromTheStartTest, WhatComesLaterIsTold) {
    isInterrupted = false;
    onWrite = [this] {
        if (writes != 2) return;
        client.Soon([this] {
            Add(Server(), "Later", new values::Value<int>(7));
            client.Connect();  // the server tells that it is there now
        });
    };
    EXPECT_TRUE(Run(Words({"watch", "/Later", "--count", "1"})).IsDone());
    EXPECT_EQ(Changes(), Words({"-- /Later is not there yet --", "/Later added = 7"}));
}

TEST_F(WatchFromTheStartTest, WhatOneMayNotSeeIsToldAndTheRestWatched) {
    client.OnAddTic([] {
        values::Refusals::Instance().Report(nullptr, QStringLiteral("/Secret"),
                                            QStringLiteral("not for you"));
    });
    const Outcome outcome = Run(Words({"watch", "/Online", "/Secret"}));
    EXPECT_EQ(outcome.code, EExitCode::Refused);
    EXPECT_EQ(outcome.message, QStringLiteral("/Secret: not for you"));
    EXPECT_EQ(Changes(), Words({"/Online = true"}));
}

TEST_F(WatchFromTheStartTest, JsonSaysWhatIsPresentAndWhatIsAbsent) {
    EXPECT_TRUE(Run(Words({"watch", "/Online", "/Later", "--json"})).IsDone());
    const QList<QJsonObject> objects = Objects();
    ASSERT_EQ(objects.size(), 3);
    EXPECT_EQ(objects[1][QStringLiteral("event")].toString(), QStringLiteral("present"));
    EXPECT_EQ(objects[1][QStringLiteral("kind")].toString(), QStringLiteral("boolean"));
    EXPECT_EQ(objects[2][QStringLiteral("event")].toString(), QStringLiteral("absent"));
    EXPECT_EQ(objects[2][QStringLiteral("path")].toString(), QStringLiteral("/Later"));
}

TEST_F(WatchCommandTest, OfAPatternTheEndOfWhatHeldItIsTold) {
    Watch(Words({"/*/Deep/C*", "--count", "2"}), [this] {
        values::Node& deep = AddNode(Local<values::Node>("Status"), "Deep");
        Add(deep, "Comment", new values::Value<QString>());
        Add(deep, "Other", new values::Value<QString>());
        tree.Delete(&deep);
    });
    EXPECT_EQ(Changes(), Words({"/Status/Deep/Comment added = ", "/Status/Deep         removed"}));
}

TEST_F(WatchCommandTest, WithoutRetryALostConnectionEndsIt) {
    client.lastError = QStringLiteral("it went away");
    const Outcome outcome = Watch(Words({"/Status", "--no-retry"}), [this] { client.Disconnect(); });
    EXPECT_EQ(outcome.code, EExitCode::NoConnection);
    EXPECT_EQ(outcome.message, QStringLiteral("no connection to example:7450: it went away"));
}

}  // namespace
