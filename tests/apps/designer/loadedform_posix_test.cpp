// SPDX-License-Identifier: Apache-2.0
#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/values/valuenumeric.h>
#include <platform/values/valueselection.h>
#include <platform/widgets/refreshscheduler.h>
#include <platform/widgets/vclabel.h>

#include <tests/apps/designer/plugin.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTextEdit>

#include <functional>

namespace {

QString S(const char* text) {
    return QString::fromUtf8(text);
}

template <class V>
V& Add(const char* parent, const char* name, V* value) {
    value->SetName(S(name));
    if (!values::Tree::Instance()->AddValue(S(parent), value)) qFatal("%s/%s is taken", parent, name);
    return *value;
}

/// A program with a form in it, before there is anything in the tree.
class LoadedForm : public testing::Test {
  protected:
    void Load(const char* className, const QByteArray& properties) {
        form = plugin::Load(plugin::Form(className, properties));
        ASSERT_NE(form, nullptr);
        widget = form->findChild<QWidget*>(S("widget"));
        ASSERT_NE(widget, nullptr);
        form->show();
    }
    void Load(const char* className) { Load(className, plugin::PathProperty("valuePath", "/Server/Item")); }
    bool IsVeiled() const {
        const auto* const veil = widget->findChild<QWidget*>(S("StaleVeil"), Qt::FindDirectChildrenOnly);
        return veil != nullptr && veil->isVisibleTo(widget);
    }
    QString Read() const {
        RefreshScheduler::Instance().Flush();
        return widget->property(qobject_cast<QComboBox*>(widget) != nullptr ? "currentText" : "text")
            .toString();
    }
    QString ReadPart(const char* name) const {
        RefreshScheduler::Instance().Flush();
        return form->findChild<QLabel*>(S(name))->text();
    }

    values::Tree tree;
    std::unique_ptr<QWidget> form;
    QWidget* widget = nullptr;
};

TEST_F(LoadedForm, AnEmptyLabelComesToLifeWithItsValue) {
    ASSERT_NO_FATAL_FAILURE(Load("VCLabel"));
    EXPECT_TRUE(IsVeiled());
    EXPECT_EQ(Read(), QString());
    auto& text = Add("/Server", "Item", new values::Value<QString>(S("Scan")));
    EXPECT_EQ(Read(), S("Scan"));
    EXPECT_FALSE(IsVeiled());
    text.SetValue(S("Idle"));
    EXPECT_EQ(Read(), S("Idle"));
    tree.Delete(&text);
    EXPECT_EQ(Read(), QString());
    EXPECT_TRUE(IsVeiled());
}

TEST_F(LoadedForm, ALineEditShowsItsText) {
    ASSERT_NO_FATAL_FAILURE(Load("VCLineEdit"));
    Add("/Server", "Item", new values::Value<QString>(S("192.0.2.1")));
    EXPECT_EQ(Read(), S("192.0.2.1"));
}

TEST_F(LoadedForm, ACheckBoxShowsItsBooleanAndSwitchesIt) {
    ASSERT_NO_FATAL_FAILURE(Load("VCCheckBox"));
    auto& flag = Add("/Server", "Item", new values::Value<bool>(true));
    RefreshScheduler::Instance().Flush();
    auto* const box = qobject_cast<QAbstractButton*>(widget);
    EXPECT_TRUE(box->isChecked());
    box->click();
    EXPECT_TRUE(WaitUntil([&flag] { return !flag.GetValue(); }));
}

TEST_F(LoadedForm, APushButtonAsks) {
    ASSERT_NO_FATAL_FAILURE(Load("VCPushButton"));
    auto& flag = Add("/Server", "Item", new values::Value<bool>(false));
    RefreshScheduler::Instance().Flush();
    qobject_cast<QAbstractButton*>(widget)->click();
    EXPECT_TRUE(WaitUntil([&flag] { return flag.GetValue(); }));
}

TEST_F(LoadedForm, AComboBoxShowsItsSelection) {
    ASSERT_NO_FATAL_FAILURE(Load("VCComboBoxClassic"));
    auto& selection = Add("/Server", "Item", new values::ValueSelection);
    selection.AddItem(S("Off"), 0, 0);
    selection.AddItem(S("On"), 1, 1);
    selection.SelectIndex(1);
    EXPECT_EQ(Read(), S("On"));
}

TEST_F(LoadedForm, ANumberIsAnIntegerUnlessTheFormSaysOtherwise) {
    ASSERT_NO_FATAL_FAILURE(Load("VCNumericFloatSpin"));
    Add("/Server", "Item", new values::ValueNumeric<int>(7, 0, 50));
    EXPECT_EQ(Read(), S("7"));
}

TEST_F(LoadedForm, ANumberHasTheUnitOfTheForm) {
    ASSERT_NO_FATAL_FAILURE(Load(
        "VCNumericFloatSpin", plugin::PathProperty("valuePath", "/Server/Item") +
                                  "<property name='unit' stdset='0'><string> MHz</string></property>" +
                                  "<property name='integer' stdset='0'><bool>false</bool></property>"
                                  "<property name='unitFactor' stdset='0'><double>1000000</double></property>"
                                  "<property name='unitDecimals' stdset='0'><number>1</number></property>"));
    Add("/Server", "Item", new values::ValueNumeric<double>(98.5e6, 30e6, 3e9));
    EXPECT_EQ(Read(), S("98.5 MHz"));
}

TEST_F(LoadedForm, AUnitThatCannotBeIsLeftOut) {
    ASSERT_NO_FATAL_FAILURE(Load("VCNumericFloatSpin",
                                 "<property name='unitFactor' stdset='0'><double>0</double></property>"
                                 "<property name='unitDecimals' stdset='0'><number>99</number></property>"));
    EXPECT_EQ(widget->property("unitFactor").toDouble(), 1);
    EXPECT_EQ(widget->property("unitDecimals").toInt(), 15);
}

TEST_F(LoadedForm, AValueOfAnotherTypeIsNotShown) {
    ASSERT_NO_FATAL_FAILURE(Load("VCCheckBox"));
    Add("/Server", "Item", new values::Value<QString>(S("true")));
    RefreshScheduler::Instance().Flush();
    EXPECT_TRUE(IsVeiled());
    EXPECT_FALSE(qobject_cast<QAbstractButton*>(widget)->isChecked());
}

TEST_F(LoadedForm, AStatusDisplayComesToLifeWithItsNodeAndAgainWithTheNextOne) {
    ASSERT_NO_FATAL_FAILURE(Load("MCSStatusDisplay", plugin::PathProperty("valuePath", "/Server/Status")));
    EXPECT_EQ(ReadPart("onlineDisp"), S("- - -"));
    for (const bool isOnline : {true, false}) {
        SCOPED_TRACE(isOnline);
        Add("/Server/Status", "Online", new values::Value<bool>(isOnline));
        const QString shown = S(isOnline ? "Online" : "Offline");
        EXPECT_TRUE(WaitUntil([&] { return ReadPart("onlineDisp") == shown; }));
        tree.Delete(tree.FindItem(S("/Server")));
        EXPECT_TRUE(WaitUntil([&] { return ReadPart("onlineDisp") == S("- - -"); }));
    }
}

TEST_F(LoadedForm, ACommandsDisplayIsLockedUntilItsNodeComes) {
    ASSERT_NO_FATAL_FAILURE(Load("MCSCommandsDisplay", plugin::PathProperty("valuePath", "/Server/Command")));
    auto* const box = form->findChild<QWidget*>(S("shallBeConnectedState"));
    EXPECT_FALSE(box->isEnabled());
    Add("/Server/Command", "ShallBeConnected", new values::Value<bool>(true));
    EXPECT_TRUE(WaitUntil([&] { return box->isEnabled(); }));
}

TEST_F(LoadedForm, AConfigurationDisplayShowsTheGroupsOfTheForm) {
    ASSERT_NO_FATAL_FAILURE(Load(
        "MCSConfigDisplay", plugin::PathProperty("valuePath", "/Server/Config") +
                                "<property name='jobConfigGroup' stdset='0'><bool>false</bool></property>"));
    EXPECT_TRUE(form->findChild<QWidget*>(S("Connection"))->isVisible());
    EXPECT_FALSE(form->findChild<QWidget*>(S("Job Settings"))->isVisible());
    Add("/Server/Config", "DeviceAddress", new values::Value<QString>(S("192.0.2.1")));
    auto* const address = form->findChild<QLineEdit*>(S("deviceAdressDisp"));
    EXPECT_TRUE(WaitUntil([&] { return address->text() == S("192.0.2.1"); }));
}

TEST_F(LoadedForm, ALogFollowsATextThatComesLater) {
    ASSERT_NO_FATAL_FAILURE(
        Load("MCSLogDisplay", plugin::PathProperty("valuePath", "/Server/Status/LogMessage") +
                                  "<property name='maxMessages'><number>50</number></property>"));
    EXPECT_EQ(widget->property("maxMessages").toInt(), 50);
    Add("/Server/Status", "LogMessage", new values::Value<QString>(S("tuned")));
    const auto* const text = form->findChild<QTextEdit*>(S("LogTextEdit"));
    EXPECT_TRUE(WaitUntil([&] { return text->toPlainText().contains(S("tuned")); }));
}

TEST_F(LoadedForm, AListShowsTheMpxOrvsOfAllItsPaths) {
    const char* const paths = "/Server/StaticMpxORVs,/Server/DynamicMpxORVs";
    ASSERT_NO_FATAL_FAILURE(Load("MCSMpxORVStatusListDisplay", plugin::PathProperty("valuePaths", paths)));
    const auto* const view = form->findChild<QTableView*>();
    EXPECT_EQ(view->model()->rowCount(), 0);
    for (const char* const node : {"/Server/StaticMpxORVs/Tower/Status", "/Server/DynamicMpxORVs/Van/Status"})
        Add(node, "Name", new values::Value<QString>(S(node)));
    EXPECT_TRUE(WaitUntil([&] { return view->model()->rowCount() == 2; }));
}

TEST_F(LoadedForm, APathThatIsTakenAwayIsFollowedNoMore) {
    ASSERT_NO_FATAL_FAILURE(Load("MCSCommandsDisplay", plugin::PathProperty("valuePath", "/Server/Command")));
    widget->setProperty("valuePath", QString());
    EXPECT_EQ(widget->property("valuePath").toString(), QString());
    Add("/Server/Command", "ShallBeConnected", new values::Value<bool>(true));
    RunTurns(3);
    EXPECT_FALSE(form->findChild<QWidget*>(S("shallBeConnectedState"))->isEnabled());
}

TEST_F(LoadedForm, AFormThatIsClosedWhileItsNodeComesIsGone) {
    ASSERT_NO_FATAL_FAILURE(Load("MCSStatusDisplay", plugin::PathProperty("valuePath", "/Server/Status")));
    Add("/Server/Status", "Online", new values::Value<bool>(true));
    form.reset();
    RunTurns(3);
    EXPECT_NE(tree.FindItem(S("/Server/Status/Online")), nullptr);
}

}  // namespace
