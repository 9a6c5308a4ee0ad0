// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/widgets/kinds.h>

#include <platform/widgets/vccheckbox.h>
#include <platform/widgets/vccomboboxclassic.h>
#include <platform/widgets/vclabel.h>
#include <platform/widgets/vclineedit.h>
#include <platform/widgets/vcnumericfloatspin.h>
#include <platform/widgets/vcpushbutton.h>

#include <tests/platform/widgets/widgettest.h>

namespace {

using values::Value;
using values::ValueBase;
using widgettest::Add;
using widgettest::Text;

class LabelKind final : public Kind {
  public:
    const char* GetName() const override { return "VCLabel"; }
    QWidget* Create(QWidget* parent) const override { return new VCLabel(parent); }
    void Bind(QWidget& widget, const QString& path) const override {
        static_cast<VCLabel&>(widget).SetText_ValuePath(path, true);
    }
    const WidgetBinding& GetBinding(const QWidget& widget) const override {
        return static_cast<const VCLabel&>(widget).GetBinding();
    }
    QString Read(const QWidget& widget) const override { return static_cast<const VCLabel&>(widget).text(); }
    ValueBase* AddValue(const char* path) const override { return Add<Value<QString>>(path, GetText(false)); }
    void SetContent(ValueBase& value, bool isSecond) const override {
        static_cast<Value<QString>&>(value).SetValue(GetText(isSecond));
    }
    QString GetText(bool isSecond) const override { return Text(isSecond ? "second" : "first"); }
    bool IsEditor() const override { return false; }
};

class CheckBoxKind final : public Kind {
  public:
    const char* GetName() const override { return "VCCheckBox"; }
    QWidget* Create(QWidget* parent) const override { return new VCCheckBox(parent); }
    void Bind(QWidget& widget, const QString& path) const override {
        static_cast<VCCheckBox&>(widget).Set_ValuePath(path);
    }
    const WidgetBinding& GetBinding(const QWidget& widget) const override {
        return static_cast<const VCCheckBox&>(widget).GetBinding();
    }
    QString Read(const QWidget& widget) const override {
        return Text(static_cast<const VCCheckBox&>(widget).isChecked() ? "checked" : "not checked");
    }
    ValueBase* AddValue(const char* path) const override { return Add<Value<bool>>(path, true); }
    void SetContent(ValueBase& value, bool isSecond) const override {
        static_cast<Value<bool>&>(value).SetValue(!isSecond);
    }
    QString GetText(bool isSecond) const override { return Text(isSecond ? "not checked" : "checked"); }
    QString GetBlank() const override { return GetText(true); }
    void Edit(QWidget& widget) const override { QTest::keyClick(&widget, Qt::Key_Space); }
};

class ComboBoxKind final : public Kind {
  public:
    const char* GetName() const override { return "VCComboBoxClassic"; }
    QWidget* Create(QWidget* parent) const override { return new VCComboBoxClassic(parent); }
    void Bind(QWidget& widget, const QString& path) const override {
        static_cast<VCComboBoxClassic&>(widget).SetValueSelection_ValuePath(path);
    }
    const WidgetBinding& GetBinding(const QWidget& widget) const override {
        return static_cast<const VCComboBoxClassic&>(widget).GetBinding();
    }
    QString Read(const QWidget& widget) const override {
        return static_cast<const VCComboBoxClassic&>(widget).currentText();
    }
    ValueBase* AddValue(const char* path) const override { return widgettest::AddSelection(path, 3, 0); }
    void SetContent(ValueBase& value, bool isSecond) const override {
        static_cast<values::ValueSelection&>(value).SelectIndex(isSecond ? 2 : 0);
    }
    QString GetText(bool isSecond) const override { return Text(isSecond ? "Two" : "Zero"); }
    void Edit(QWidget& widget) const override { QTest::keyClick(&widget, Qt::Key_Down); }
};

class LineEditKind final : public Kind {
  public:
    const char* GetName() const override { return "VCLineEdit"; }
    QWidget* Create(QWidget* parent) const override { return new VCLineEdit(parent); }
    void Bind(QWidget& widget, const QString& path) const override {
        static_cast<VCLineEdit&>(widget).SetText_ValuePath(path);
    }
    const WidgetBinding& GetBinding(const QWidget& widget) const override {
        return static_cast<const VCLineEdit&>(widget).GetBinding();
    }
    QString Read(const QWidget& widget) const override {
        return static_cast<const VCLineEdit&>(widget).displayText();
    }
    ValueBase* AddValue(const char* path) const override { return Add<Value<QString>>(path, GetText(false)); }
    void SetContent(ValueBase& value, bool isSecond) const override {
        static_cast<Value<QString>&>(value).SetValue(GetText(isSecond));
    }
    QString GetText(bool isSecond) const override { return Text(isSecond ? "second" : "first"); }
    void Edit(QWidget& widget) const override {
        QTest::keyClicks(&widget, Text("x"));
        QTest::keyClick(&widget, Qt::Key_Return);
    }
};

class SpinKind final : public Kind {
  public:
    const char* GetName() const override { return "VCNumericFloatSpin"; }
    QWidget* Create(QWidget* parent) const override { return new VCNumericFloatSpin(parent); }
    void Bind(QWidget& widget, const QString& path) const override {
        static_cast<VCNumericFloatSpin&>(widget).SetNumericInt_ValuePath(path);
    }
    const WidgetBinding& GetBinding(const QWidget& widget) const override {
        return static_cast<const VCNumericFloatSpin&>(widget).GetBinding();
    }
    QString Read(const QWidget& widget) const override {
        return static_cast<const VCNumericFloatSpin&>(widget).text();
    }
    ValueBase* AddValue(const char* path) const override {
        return Add<values::ValueNumeric<int>>(path, 7, 0, 50);
    }
    void SetContent(ValueBase& value, bool isSecond) const override {
        static_cast<values::ValueNumeric<int>&>(value).SetValue(isSecond ? 8 : 7);
    }
    QString GetText(bool isSecond) const override { return Text(isSecond ? "8" : "7"); }
    void Edit(QWidget& widget) const override { QTest::keyClick(&widget, Qt::Key_Up); }
};

class PushButtonKind final : public Kind {
  public:
    const char* GetName() const override { return "VCPushButton"; }
    QWidget* Create(QWidget* parent) const override { return new VCPushButton(parent); }
    void Bind(QWidget& widget, const QString& path) const override {
        static_cast<VCPushButton&>(widget).Set_ValuePath(path);
    }
    const WidgetBinding& GetBinding(const QWidget& widget) const override {
        return static_cast<const VCPushButton&>(widget).GetBinding();
    }
    QString Read(const QWidget& widget) const override {
        return Text(static_cast<const VCPushButton&>(widget).isDown() ? "down" : "up");
    }
    ValueBase* AddValue(const char* path) const override { return Add<Value<bool>>(path, false); }
    void SetContent(ValueBase& value, bool isSecond) const override {
        static_cast<Value<bool>&>(value).SetValue(isSecond);
    }
    QString GetText(bool isSecond) const override { return Text(isSecond ? "down" : "up"); }
    QString GetBlank() const override { return GetText(false); }
    void Edit(QWidget& widget) const override { QTest::keyClick(&widget, Qt::Key_Space); }
};

const LabelKind label;
const CheckBoxKind checkBox;
const ComboBoxKind comboBox;
const LineEditKind lineEdit;
const SpinKind spin;
const PushButtonKind pushButton;

}  // namespace

const std::array<const Kind*, 6>& AllKinds() {
    static const std::array<const Kind*, 6> kinds = {&label,    &checkBox, &comboBox,
                                                     &lineEdit, &spin,     &pushButton};
    return kinds;
}

const std::array<const Kind*, 5>& EditorKinds() {
    static const std::array<const Kind*, 5> kinds = {&checkBox, &comboBox, &lineEdit, &spin, &pushButton};
    return kinds;
}
