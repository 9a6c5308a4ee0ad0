// SPDX-License-Identifier: Apache-2.0
// The page of the configuration, by mouse and keys, on a tree whose server the test plays.
#include <apps/pages/changemark.h>
#include <apps/pages/configpage.h>

#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>

#include <tests/support/printing.h>
#include <tests/support/recordingobserver.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include <functional>

namespace {

class ConfigPageTest : public testing::Test {
  protected:
    ConfigPageTest() {
        Text("Config/DeviceName", "Tower");
        Text("Config/DeviceAddress", "df1");
        values::ProvideValue<values::Value<bool>>(Path("Config/ForceConnect"), false, true, nullptr);
        values::ProvideValue<values::Value<bool>>(Path("Config/SaveConfig"), false, true, nullptr);
    }

    static QString Path(const char* key) { return QStringLiteral("/Server/") + QLatin1String(key); }
    static void Text(const char* key, const char* text) {
        values::ProvideValue<values::Value<QString>>(Path(key), QString::fromUtf8(text), true, nullptr);
    }
    static QString TextAt(const char* key) {
        return values::FindValue<values::Value<QString>>(Path(key), nullptr, nullptr)->GetValue();
    }
    /// As a server does that tells what is saved.
    static void Save() {
        Text("Status/SavedConfig/DeviceName", qPrintable(TextAt("Config/DeviceName")));
        Text("Status/SavedConfig/DeviceAddress", qPrintable(TextAt("Config/DeviceAddress")));
        values::ProvideValue<values::Value<bool>>(
            Path("Status/SavedConfig/ForceConnect"),
            values::FindValue<values::Value<bool>>(Path("Config/ForceConnect"), nullptr, nullptr)->GetValue(),
            true, nullptr);
        Text("Status/SavedConfig/Since", "2020-02-03T04:05:06.000Z");
        Text("Status/SavedConfig/By", "mcconsole on tower1");
    }
    void Show() {
        page.Bind(QStringLiteral("/Server"), AllSegments);
        page.resize(600, 500);
        page.show();
        QCoreApplication::processEvents();
    }
    void Type(const char* field, const char* text) {
        auto* const edit = page.findChild<QLineEdit*>(QString::fromLatin1(field));
        QTest::mouseClick(edit, Qt::LeftButton);
        edit->selectAll();
        QTest::keyClicks(edit, QString::fromLatin1(text));
        QTest::keyClick(edit, Qt::Key_Return);
    }
    std::string NotSaved() {
        return page.findChild<QLabel*>(QStringLiteral("NotSaved"))->text().toStdString();
    }
    std::string When() { return page.findChild<QLabel*>(QStringLiteral("SavedWhen"))->text().toStdString(); }
    QPushButton& Button(const char* name) { return *page.findChild<QPushButton*>(QString::fromLatin1(name)); }
    int CountMarks() {
        int count = 0;
        for (const auto* mark : page.findChildren<ChangeMark*>())
            count += mark->isVisible() ? 1 : 0;
        return count;
    }

    values::Tree tree;
    ConfigPage page;
};

TEST_F(ConfigPageTest, WithoutAChangeThereIsNothingToSave) {
    Save();
    Show();
    EXPECT_EQ(NotSaved(), "");
    EXPECT_EQ(CountMarks(), 0);
    EXPECT_FALSE(Button("SaveConfigButton").isEnabled());
    EXPECT_FALSE(Button("RevertConfigButton").isEnabled());
}

TEST_F(ConfigPageTest, WhatIsTypedIsMarkedUntilItIsSaved) {
    Save();
    Show();
    Type("deviceNameDisp", "Mast");
    EXPECT_EQ(NotSaved(), "Not saved: DF Station Name (saved: \"Tower\")");
    EXPECT_EQ(CountMarks(), 1);
    QTest::mouseClick(&Button("SaveConfigButton"), Qt::LeftButton);
    EXPECT_TRUE(
        values::FindValue<values::Value<bool>>(Path("Config/SaveConfig"), nullptr, nullptr)->GetValue());
    Save();
    EXPECT_EQ(NotSaved(), "");
    EXPECT_EQ(CountMarks(), 0);
    EXPECT_FALSE(Button("SaveConfigButton").isEnabled());
}

TEST_F(ConfigPageTest, AChangeTakenBackIsNone) {
    Save();
    Show();
    Type("deviceNameDisp", "Mast");
    Type("deviceNameDisp", "Tower");
    EXPECT_EQ(NotSaved(), "");
}

TEST_F(ConfigPageTest, RevertBringsBackWhatWasSaved) {
    Save();
    Show();
    Type("deviceNameDisp", "Mast");
    QTest::mouseClick(
        page.findChild<QCheckBox*>(QStringLiteral("forceConnectDisp")), Qt::LeftButton, Qt::NoModifier,
        QPoint(8, page.findChild<QCheckBox*>(QStringLiteral("forceConnectDisp"))->height() / 2));
    ASSERT_EQ(CountMarks(), 2);
    QTest::mouseClick(&Button("RevertConfigButton"), Qt::LeftButton);
    EXPECT_EQ(TextAt("Config/DeviceName"), QStringLiteral("Tower"));
    EXPECT_FALSE(
        values::FindValue<values::Value<bool>>(Path("Config/ForceConnect"), nullptr, nullptr)->GetValue());
    EXPECT_EQ(CountMarks(), 0);
}

TEST_F(ConfigPageTest, WhatWasRevertedCanBeHadBack) {
    Save();
    Show();
    Type("deviceNameDisp", "Mast");
    QString told;
    std::function<void()> undo;
    QObject::connect(&page, &Page::Acted, &page, [&](const QString& what, const std::function<void()>& back) {
        told = what;
        undo = back;
    });
    QTest::mouseClick(&Button("RevertConfigButton"), Qt::LeftButton);
    EXPECT_EQ(told, QStringLiteral("Reverted to what was saved: DF Station Name."));
    ASSERT_TRUE(undo);
    undo();
    EXPECT_EQ(TextAt("Config/DeviceName"), QStringLiteral("Mast"));
    EXPECT_EQ(TextAt("Config/DeviceAddress"), QStringLiteral("df1"));
    EXPECT_EQ(CountMarks(), 1);
    QTest::mouseClick(&Button("RevertConfigButton"), Qt::LeftButton);
    Text("Config/DeviceName", "Hill");
    undo();
    EXPECT_EQ(TextAt("Config/DeviceName"), QStringLiteral("Hill")) << "somebody has entered it since";
}

TEST_F(ConfigPageTest, WhatIsStillTypedIsMarkedAndSavedByTheKey) {
    Save();
    Show();
    QApplication::setActiveWindow(&page);
    auto* const name = page.findChild<QLineEdit*>(QStringLiteral("deviceNameDisp"));
    QTest::mouseClick(name, Qt::LeftButton);
    name->selectAll();
    QTest::keyClicks(name, QStringLiteral("Mast"));
    EXPECT_TRUE(WaitUntil([this] { return Button("SaveConfigButton").isEnabled(); }));
    EXPECT_EQ(NotSaved(), "Not saved: DF Station Name (saved: \"Tower\")");
    EXPECT_EQ(CountMarks(), 1);
    QString nameWhenSaved;
    RecordingObserver saving([&](Observable*, TChangeCode) { nameWhenSaved = TextAt("Config/DeviceName"); });
    auto* const save = values::FindValue<values::Value<bool>>(Path("Config/SaveConfig"), nullptr, nullptr);
    save->AddObserver(&saving);
    QTest::keyClick(name, Qt::Key_C, Qt::AltModifier);
    EXPECT_TRUE(WaitUntil([&] { return !nameWhenSaved.isEmpty(); }));
    save->DeleteObserver(&saving);
    EXPECT_EQ(nameWhenSaved, QStringLiteral("Mast"));
}

TEST_F(ConfigPageTest, RevertTakesBackWhatIsStillTyped) {
    Save();
    Show();
    QApplication::setActiveWindow(&page);
    auto* const name = page.findChild<QLineEdit*>(QStringLiteral("deviceNameDisp"));
    QTest::mouseClick(name, Qt::LeftButton);
    QTest::keyClicks(name, QStringLiteral(" 2"));
    ASSERT_TRUE(WaitUntil([this] { return Button("RevertConfigButton").isEnabled(); }));
    QTest::keyClick(name, Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(WaitUntil([name] { return name->text() == QLatin1String("Tower"); }));
    name->clearFocus();
    EXPECT_EQ(TextAt("Config/DeviceName"), QStringLiteral("Tower"));
    EXPECT_EQ(NotSaved(), "");
    EXPECT_FALSE(Button("RevertConfigButton").isEnabled());
}

TEST_F(ConfigPageTest, SaysWhenItWasSavedAndByWhom) {
    Save();
    Show();
    EXPECT_NE(When().find("Saved by mcconsole on tower1, "), std::string::npos) << When();
    Text("Status/SavedConfig/By", "");
    EXPECT_NE(When().find("Saved at the server, "), std::string::npos) << When();
    Text("Status/SavedConfig/Since", "");
    EXPECT_EQ(When(), "Not saved since the server began");
}

TEST_F(ConfigPageTest, AServerThatDoesNotTellIsSavedAtAnyTime) {
    Show();
    EXPECT_TRUE(Button("SaveConfigButton").isEnabled());
    EXPECT_FALSE(Button("RevertConfigButton").isVisible());
    EXPECT_EQ(CountMarks(), 0);
}

TEST_F(ConfigPageTest, WithoutAServerNothingIsMarked) {
    Save();
    Show();
    Type("deviceNameDisp", "Mast");
    page.Bind(QStringLiteral("/Server"), NoSegments);
    EXPECT_EQ(CountMarks(), 0);
    EXPECT_EQ(NotSaved(), "");
}

}  // namespace
