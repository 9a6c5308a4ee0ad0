// SPDX-License-Identifier: Apache-2.0
#include <tests/devicecontrol/multichannelserver/common/logdisplaytest.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QScrollBar>

#include <functional>
#include <memory>
#include <ostream>

namespace {

TEST_F(LogDisplayTest, LaysOutTheTextAboveTwoButtons) {
    const auto* const layout = qobject_cast<QVBoxLayout*>(m_display.layout());
    ASSERT_NE(layout, nullptr);
    EXPECT_EQ(layout->contentsMargins(), QMargins());
    EXPECT_EQ(layout->spacing(), 5);
    ASSERT_EQ(layout->count(), 2);
    EXPECT_EQ(layout->itemAt(0)->widget(), &Area());

    const auto* const row = qobject_cast<QHBoxLayout*>(layout->itemAt(1)->layout());
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->contentsMargins(), QMargins(5, 5, 5, 5));
    ASSERT_EQ(row->count(), 2);
    EXPECT_EQ(row->itemAt(0)->widget(), &Button("ClearButton"));
    EXPECT_EQ(row->itemAt(1)->widget(), &Button("SaveLogButton"));
    EXPECT_EQ(Button("ClearButton").text(), QStringLiteral("Clear"));
    EXPECT_EQ(Button("SaveLogButton").text(), QStringLiteral("Save to file..."));
}

TEST_F(LogDisplayTest, TheTextTakesAllTheHeight) {
    m_display.resize(400, 300);
    m_display.show();
    const int before = Area().height();
    m_display.resize(400, 500);
    EXPECT_EQ(Area().height(), before + 200);
}

TEST_F(LogDisplayTest, TheTextIsReadOnlyUnwrappedAndMayBeRich) {
    EXPECT_TRUE(Area().isReadOnly());
    EXPECT_TRUE(Area().acceptRichText());
    EXPECT_EQ(Area().wordWrapMode(), QTextOption::NoWrap);
}

TEST_F(LogDisplayTest, IsNamedAfterItsClassUnlessNamedOtherwise) {
    EXPECT_EQ(m_display.objectName(), QStringLiteral("MCSLogDisplay"));
    QWidget parent;
    const MCSLogDisplay named(&parent, "Messages", Qt::Window);
    EXPECT_EQ(named.objectName(), QStringLiteral("Messages"));
    EXPECT_EQ(named.parentWidget(), &parent);
    EXPECT_TRUE(named.isWindow());
}

TEST_F(LogDisplayTest, ItsMetaObjectListsSignalAndSlotsInOrder) {
    const QMetaObject& meta = MCSLogDisplay::staticMetaObject;
    EXPECT_STREQ(meta.className(), "MCSLogDisplay");
    QList<QByteArray> methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods << meta.method(i).methodSignature();
    EXPECT_EQ(methods, (QList<QByteArray>{"SignalVisible(bool)", "SlotClear()", "SlotSaveLog()",
                                          "SlotSaveLogToFile(QString)"}));
    EXPECT_EQ(meta.method(meta.methodOffset()).parameterNames(), QList<QByteArray>{"bVisible"});
    EXPECT_EQ(meta.method(meta.methodOffset() + 3).parameterNames(), QList<QByteArray>{"sFileName"});
    EXPECT_EQ(m_display.qt_metacast("IObserver"), static_cast<IObserver*>(&m_display));
}

TEST_F(LogDisplayTest, ShowsEachMessageAsALine) {
    EXPECT_TRUE(Bind());
    Log(QStringLiteral("first"));
    Log(QStringLiteral("second"));
    EXPECT_EQ(Lines(), (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
}

TEST_F(LogDisplayTest, ShowsAMessageAgainThatComesAgain) {
    Bind();
    Log(QStringLiteral("again"));
    Log(QStringLiteral("again"));
    EXPECT_EQ(Lines().size(), 2);
}

TEST_F(LogDisplayTest, ShowsAtOnceWhatIsThereWhenItIsBound) {
    Log(QStringLiteral("before"));
    EXPECT_TRUE(Bind());
    EXPECT_EQ(Lines(), QStringList{QStringLiteral("before")});
}

TEST_F(LogDisplayTest, AnEmptyMessageIsNeverShown) {
    EXPECT_TRUE(Bind());
    EXPECT_EQ(Area().document()->characterCount(), 1);
    Log(QStringLiteral("one"));
    Log(QString());
    Log(QStringLiteral("two"));
    EXPECT_EQ(Lines(), (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
}

TEST_F(LogDisplayTest, HeedsOnlyTheContentOfItsValue) {
    Bind();
    Log(QStringLiteral("one"));
    for (const TChangeCode code : {4, 7, 8, 9, 15, 16, 17, 18})
        m_message->NotifyObservers(code);
    m_message->SetState(values::Stale);
    auto* const stranger = treeaccess::PutValue<Text>(s_parent, "Other");
    stranger->SetValue(QStringLiteral("strange"));
    m_display.Update(stranger, 3);
    m_display.Update(nullptr, 3);
    EXPECT_EQ(Lines(), QStringList{QStringLiteral("one")});
}

TEST_F(LogDisplayTest, CannotBeBoundToWhatIsNotAText) {
    treeaccess::PutValue<values::Value<int>>(s_parent, "Number");
    EXPECT_FALSE(m_display.SetLogMessage_ValuePath(s_parent + QStringLiteral("/Number")));
    EXPECT_FALSE(m_display.SetLogMessage_ValuePath(s_parent));
    EXPECT_FALSE(m_display.SetLogMessage_ValuePath(s_parent + QStringLiteral("/Nothing")));
    EXPECT_EQ(m_tree.FindItem(s_parent + QStringLiteral("/Nothing")), nullptr);
    EXPECT_FALSE(m_display.SetLogMessage_ValuePath(QString()));
}

TEST_F(LogDisplayTest, CanBeBoundOnceItsSubtreeIsThere) {
    const QString path = QStringLiteral("/Later/Status/LogMessage");
    EXPECT_FALSE(m_display.SetLogMessage_ValuePath(path));
    auto* const later = treeaccess::PutValue<Text>(QStringLiteral("/Later/Status"), "LogMessage");
    later->SetValue(QStringLiteral("unheard"));
    EXPECT_EQ(Lines(), QStringList());
    EXPECT_TRUE(m_display.SetLogMessage_ValuePath(path));
    EXPECT_EQ(Lines(), QStringList{QStringLiteral("unheard")});
}

TEST_F(LogDisplayTest, BoundToAnotherPathItKeepsItsLinesAndLetsTheFirstGo) {
    auto* const other = treeaccess::PutValue<Text>(s_parent, "Other");
    other->SetValue(QStringLiteral("other"));
    Bind();
    Log(QStringLiteral("first"));
    EXPECT_TRUE(m_display.SetLogMessage_ValuePath(s_parent + QStringLiteral("/Other")));
    EXPECT_EQ(m_message->CountObservers(), 0);
    Log(QStringLiteral("unheard"));
    EXPECT_EQ(Lines(), (QStringList{QStringLiteral("first"), QStringLiteral("other")}));
    EXPECT_FALSE(m_display.SetLogMessage_ValuePath(QString()));
    EXPECT_EQ(other->CountObservers(), 0);
}

TEST_F(LogDisplayTest, BoundToTheSamePathAgainItIsToldOnce) {
    Bind();
    Log(QStringLiteral("one"));
    EXPECT_TRUE(Bind());
    EXPECT_EQ(m_message->CountObservers(), 1);
    Log(QStringLiteral("two"));
    EXPECT_EQ(Lines(), (QStringList{QStringLiteral("one"), QStringLiteral("one"), QStringLiteral("two")}));
}

TEST_F(LogDisplayTest, DestroyedWhileBoundItIsNotToldAnyMore) {
    auto display = std::make_unique<MCSLogDisplay>();
    display->SetLogMessage_ValuePath(s_path);
    EXPECT_EQ(m_message->CountObservers(), 1);
    display.reset();
    EXPECT_EQ(m_message->CountObservers(), 0);
    Log(QStringLiteral("to nobody"));
}

TEST_F(LogDisplayTest, ForgetsAValueThatGoesAndTakesTheNextOne) {
    Bind();
    Log(QStringLiteral("one"));
    treeaccess::DeleteAt(s_parent);
    m_message = treeaccess::PutValue<Text>(s_parent, "LogMessage");
    Log(QStringLiteral("unheard"));
    EXPECT_EQ(Lines(), QStringList{QStringLiteral("one")});
    EXPECT_TRUE(Bind());
    Log(QStringLiteral("two"));
    EXPECT_EQ(Lines(),
              (QStringList{QStringLiteral("one"), QStringLiteral("unheard"), QStringLiteral("two")}));
}

TEST_F(LogDisplayTest, AThousandLinesStayAndOneMoreClearsAll) {
    Bind();
    LogLines(1000);
    EXPECT_EQ(Lines().size(), 1000);
    EXPECT_EQ(Lines().first(), QStringLiteral("line 1"));
    Log(QStringLiteral("one too many"));
    EXPECT_EQ(Area().toPlainText(), QString());
    Log(QStringLiteral("the next"));
    EXPECT_EQ(Lines(), QStringList{QStringLiteral("the next")});
}

TEST_F(LogDisplayTest, ALimitBelowOneChangesNothing) {
    Bind();
    LogLines(50);
    for (const int limit : {0, -5, std::numeric_limits<int>::min()})
        m_display.SetMaxMessages(limit);
    EXPECT_EQ(Lines().size(), 50);
    LogLines(950);
    EXPECT_EQ(Lines().size(), 1000);
}

TEST_F(LogDisplayTest, ASmallerLimitClearsAtOnce) {
    Bind();
    LogLines(50);
    m_display.SetMaxMessages(50);
    EXPECT_EQ(Lines().size(), 50);
    m_display.SetMaxMessages(10);
    EXPECT_EQ(Lines(), QStringList());
    LogLines(10);
    EXPECT_EQ(Lines().size(), 10);
    Log(QStringLiteral("one too many"));
    EXPECT_EQ(Lines(), QStringList());
}

TEST_F(LogDisplayTest, TellsWhenItIsShownAndHidden) {
    QSignalSpy spy(&m_display, &MCSLogDisplay::SignalVisible);
    m_display.show();
    m_display.hide();
    ASSERT_EQ(spy.count(), 2);
    EXPECT_TRUE(spy[0][0].toBool());
    EXPECT_FALSE(spy[1][0].toBool());
}

TEST_F(LogDisplayTest, FollowsTheEndOnlyWhileTheEndIsShown) {
    m_display.resize(400, 200);
    m_display.show();
    Bind();
    LogLines(100);
    Settle();
    QScrollBar& bar = *Area().verticalScrollBar();
    EXPECT_GT(bar.maximum(), 0);
    EXPECT_EQ(bar.value(), bar.maximum());
    bar.setValue(10);
    LogLines(5);
    Log(QString(3000, QLatin1Char('x')));
    Settle();
    EXPECT_EQ(bar.value(), 10);
    bar.setValue(bar.maximum());
    Log(QString(3000, QLatin1Char('x')));
    Settle();
    EXPECT_EQ(bar.value(), bar.maximum());
}

TEST_F(LogDisplayTest, HoldsEveryLineAtOnceAndLaysThemOutTogether) {
    m_display.show();
    Bind();
    QCoreApplication::processEvents();
    const QSignalSpy changes(Area().document(), &QTextDocument::contentsChanged);
    for (int i = 1; i <= 200; ++i) {
        Log(QStringLiteral("line %1").arg(i));
        ASSERT_EQ(Lines().size(), i);
    }
    EXPECT_EQ(changes.count(), 0);
    EXPECT_TRUE(WaitUntil([&] { return changes.count() > 0; }));
    EXPECT_EQ(changes.count(), 1);
    Settle();
}

// In one turn of the event loop, so nothing was laid out in between.
TEST_F(LogDisplayTest, KeepsToTheLimitInEveryTurn) {
    m_display.show();
    Bind();
    LogLines(1000);
    EXPECT_EQ(Lines().size(), 1000);
    Log(QStringLiteral("one too many"));
    EXPECT_EQ(Area().toPlainText(), QString());
    EXPECT_EQ(Area().document()->blockCount(), 1);
    LogLines(1001 + 7);
    EXPECT_EQ(Lines().size(), 7);
    Settle();
    EXPECT_EQ(Lines().first(), QStringLiteral("line 1002"));
}

struct EndRow {
    const char* name;
    std::function<void(MCSLogDisplay&)> act;
};
void PrintTo(const EndRow& row, std::ostream* stream) {
    *stream << row.name;
}

class LogDisplayFrame : public LogDisplayTest, public testing::WithParamInterface<EndRow> {};

// Whatever needs the lines laid out does not wait for the next frame.
TEST_P(LogDisplayFrame, EndsWith) {
    m_display.resize(400, 300);
    if (qstrcmp(GetParam().name, "Showing") != 0) m_display.show();
    QCoreApplication::processEvents();
    Bind();
    LogLines(3);
    const QSignalSpy changes(Area().document(), &QTextDocument::contentsChanged);
    GetParam().act(m_display);
    EXPECT_GT(changes.count(), 0);
    Log(QStringLiteral("the next"));
    Settle();
}

QTextEdit& AreaOf(const MCSLogDisplay& display) {
    return *display.findChild<QTextEdit*>();
}

INSTANTIATE_TEST_SUITE_P(
    , LogDisplayFrame,
    testing::Values(EndRow{"Showing", [](MCSLogDisplay& display) { display.show(); }},
                    EndRow{"Clearing", [](MCSLogDisplay& display) { display.SlotClear(); }},
                    EndRow{"Saving",
                           [](MCSLogDisplay& display) {
                               const QTemporaryDir directory;
                               display.SlotSaveLogToFile(directory.filePath(QStringLiteral("log")));
                           }},
                    EndRow{"ALimit", [](MCSLogDisplay& display) { display.SetMaxMessages(1); }},
                    EndRow{"APicture", [](MCSLogDisplay& display) { display.grab(); }},
                    EndRow{"AResize", [](MCSLogDisplay& display) { display.resize(500, 400); }},
                    EndRow{"AClick",
                           [](MCSLogDisplay& display) {
                               QTest::mouseClick(AreaOf(display).viewport(), Qt::LeftButton);
                           }},
                    EndRow{"AKey",
                           [](MCSLogDisplay& display) {
                               QTest::keyClick(&AreaOf(display), Qt::Key_A, Qt::ControlModifier);
                           }}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(LogDisplayTest, MayBeDestroyedBeforeItsLinesAreLaidOut) {
    auto display = std::make_unique<MCSLogDisplay>();
    display->SetLogMessage_ValuePath(s_path);
    LogLines(3);
    display.reset();
    QCoreApplication::processEvents();
}

TEST_F(LogDisplayTest, TheClearButtonClears) {
    Bind();
    LogLines(3);
    m_display.show();
    QTest::mouseClick(&Button("ClearButton"), Qt::LeftButton);
    EXPECT_EQ(Lines(), QStringList());
    LogLines(1);
    EXPECT_EQ(Lines().size(), 1);
}

TEST_F(LogDisplayTest, WorksByKeyboard) {
    Bind();
    LogLines(3);
    m_display.show();
    m_display.activateWindow();
    Area().setFocus();
    ASSERT_TRUE(WaitUntil([this] { return Area().hasFocus(); }));
    QTest::keyClick(&Area(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(Area().textCursor().selectedText().count(QChar::ParagraphSeparator), 2);
    QTest::keyClick(&Area(), Qt::Key_Tab);
    EXPECT_TRUE(Button("ClearButton").hasFocus());
    QTest::keyClick(&Button("ClearButton"), Qt::Key_Tab);
    EXPECT_TRUE(Button("SaveLogButton").hasFocus());
    QTest::keyClick(&Button("SaveLogButton"), Qt::Key_Backtab);
    QTest::keyClick(&Button("ClearButton"), Qt::Key_Space);
    EXPECT_EQ(Lines(), QStringList());
}

TEST_F(LogDisplayTest, CannotBeTypedInto) {
    Bind();
    LogLines(1);
    m_display.show();
    QTest::keyClicks(&Area(), QStringLiteral("typed"));
    QTest::keyClick(&Area(), Qt::Key_Delete);
    EXPECT_EQ(Lines(), QStringList{QStringLiteral("line 1")});
}

TEST_F(LogDisplayTest, TellsAssistiveTechnologyWhatTheTextIs) {
    EXPECT_EQ(Area().accessibleName(), QStringLiteral("Log messages"));
}

}  // namespace
