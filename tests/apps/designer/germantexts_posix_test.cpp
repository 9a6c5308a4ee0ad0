// SPDX-License-Identifier: Apache-2.0
// The plugin speaks the language of Qt Designer, and no other program's.
#include <tests/apps/designer/plugin.h>
#include <tests/support/dialogs/modaldriver.h>
#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QLocale>
#include <QtCore/QPluginLoader>
#include <QtDesigner/QDesignerComponents>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionManager>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <QtWidgets/QAction>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

namespace {

QString S(const char* text) {
    return QString::fromUtf8(text);
}

class InGerman : public testing::Test {
  protected:
    InGerman() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Austria)); }
    ~InGerman() override { QLocale::setDefault(QLocale::c()); }

    QDesignerCustomWidgetInterface* Widget(const char* className) {
        auto* const all = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(loader.instance());
        const auto widgets = all != nullptr ? all->customWidgets() : QList<QDesignerCustomWidgetInterface*>();
        for (QDesignerCustomWidgetInterface* const widget : widgets)
            if (widget->name() == S(className)) return widget;
        qFatal("there is no %s", className);
    }
    /// As Qt Designer does before it uses a widget.
    QDesignerCustomWidgetInterface* Initialized(const char* className) {
        QDesignerCustomWidgetInterface* const widget = Widget(className);
        widget->initialize(core.get());
        return widget;
    }
    QAction* MenuOf(QWidget* widget) const {
        auto* const menu = qt_extension<QDesignerTaskMenuExtension*>(core->extensionManager(), widget);
        return menu->preferredEditAction();
    }
    /// All texts of \a widget that are shown in labels.
    static QStringList Labels(const QWidget& widget) {
        QStringList texts;
        for (const QLabel* const label : widget.findChildren<QLabel*>())
            texts << label->text();
        return texts;
    }

    QPluginLoader loader{plugin::File()};
    std::unique_ptr<QDesignerFormEditorInterface> core{QDesignerComponents::createFormEditor(nullptr)};
};

TEST_F(InGerman, AProgramThatLoadsFormsChoosesItsLanguageItself) {
    EXPECT_EQ(Widget("VCLabel")->toolTip(), S("Shows a value of any type as text"));
}

TEST_F(InGerman, TheBoxOfWidgetsIsGerman) {
    const QDesignerCustomWidgetInterface* const label = Initialized("VCLabel");
    EXPECT_EQ(label->toolTip(), S("Zeigt einen Wert jeder Art als Text"));
    EXPECT_TRUE(label->whatsThis().startsWith(S("Zeigt den Wert bei valuePath.")));
    EXPECT_EQ(label->group(), S("MultiChannelServer-Werte"));
    EXPECT_EQ(Initialized("MCSLogDisplay")->group(), S("MultiChannelServer-Anzeigen"));
}

TEST_F(InGerman, TheDialogThatChoosesAPathIsGerman) {
    const std::unique_ptr<QWidget> made(Initialized("VCCheckBox")->createWidget(nullptr));
    QAction* const choose = MenuOf(made.get());
    EXPECT_EQ(choose->text(), S("Den Pfad wählen..."));
    QStringList labels;
    WithModalDialog<QDialog>([choose] { choose->trigger(); },
                             [&labels](QDialog& dialog) {
                                 dialog.findChild<QLineEdit*>(S("Path"))->setText(S("Mode"));
                                 labels = Labels(dialog);
                                 dialog.reject();
                             });
    EXPECT_TRUE(labels.contains(S("&Benutzer:"))) << labels.join(S(" | ")).toStdString();
    EXPECT_TRUE(labels.contains(S("Ein Pfad beginnt mit „/“."))) << labels.join(S(" | ")).toStdString();
}

TEST_F(InGerman, ADisplayOnAFormIsGerman) {
    const std::unique_ptr<QWidget> made(Initialized("MCSStatusDisplay")->createWidget(nullptr));
    EXPECT_TRUE(Labels(*made).contains(S("Betriebsart:"))) << Labels(*made).join(S(" | ")).toStdString();
}

TEST_F(InGerman, TheTextsGoWithQtDesigner) {
    const QDesignerCustomWidgetInterface* const label = Initialized("VCLabel");
    core.reset();
    EXPECT_EQ(label->toolTip(), S("Shows a value of any type as text"));
}

}  // namespace
