// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/designer/plugin.h>
#include <tests/support/dialogs/modaldriver.h>
#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtDesigner/QDesignerComponents>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerIntegration>
#include <QtDesigner/QDesignerPropertyEditorInterface>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionManager>
#include <QtWidgets/QAction>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QUndoStack>

namespace {

QString S(const char* text) {
    return QString::fromUtf8(text);
}

/// Qt Designer, as far as it has no windows, with the plugin. One for all, as in a process of its own: it
/// initializes a plugin once.
class InDesigner : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        const QStringList before = QCoreApplication::libraryPaths();
        QCoreApplication::setLibraryPaths({plugin::Folder()});  // and none of what else the machine has
        QDesignerComponents::initializeResources();
        core = QDesignerComponents::createFormEditor(nullptr);
        QDesignerComponents::createTaskMenu(core, core);
        QDesignerComponents::initializePlugins(core);
        QCoreApplication::setLibraryPaths(before);
        core->setPropertyEditor(QDesignerComponents::createPropertyEditor(core, nullptr));
        new QDesignerIntegration(core, core);
    }
    static void TearDownTestSuite() {
        delete core->propertyEditor();
        delete core;
    }

    void Open(const QByteArray& text) {
        form.reset(core->formWindowManager()->createFormWindow());
        form->setContents(QString::fromUtf8(text));
        core->formWindowManager()->setActiveFormWindow(form.get());
        widget = form->findChild<QWidget*>(S("widget"));
        ASSERT_NE(widget, nullptr);
    }
    QAction* Choose() const {
        const auto* const menu = qt_extension<QDesignerTaskMenuExtension*>(core->extensionManager(), widget);
        return menu != nullptr ? menu->preferredEditAction() : nullptr;
    }
    /// Chooses \a path in the dialog that the menu opens.
    void ChoosePath(const char* path) {
        WithModalDialog<QDialog>([this] { Choose()->trigger(); },
                                 [path](QDialog& dialog) {
                                     dialog.findChild<QLineEdit*>(S("Path"))->setText(S(path));
                                     dialog.accept();
                                 });
    }

    static QDesignerFormEditorInterface* core;
    std::unique_ptr<QDesignerFormWindowInterface> form;
    QWidget* widget = nullptr;
};

QDesignerFormEditorInterface* InDesigner::core = nullptr;

TEST_F(InDesigner, AFormThatIsSavedKeepsItsPaths) {
    ASSERT_NO_FATAL_FAILURE(Open(plugin::Form("VCLabel", plugin::PathProperty("valuePath", "/Server/Mode"))));
    EXPECT_EQ(widget->property("valuePath").toString(), S("/Server/Mode"));
    const QString saved = form->contents();
    EXPECT_TRUE(saved.contains(S("<property name=\"valuePath\" stdset=\"0\">"))) << saved.toStdString();
    EXPECT_TRUE(saved.contains(S("<cstring>/Server/Mode</cstring>"))) << saved.toStdString();
    EXPECT_TRUE(saved.contains(S("<header location=\"global\">platform/widgets/vclabel.h</header>")));
    ASSERT_NO_FATAL_FAILURE(Open(saved.toUtf8()));
    EXPECT_EQ(widget->property("valuePath").toString(), S("/Server/Mode"));
}

TEST_F(InDesigner, TheSuppressionOnlyLooksLikeIt) {
    ASSERT_NO_FATAL_FAILURE(Open(plugin::Form("GTSDisplay", QByteArray())));
    EXPECT_STREQ(widget->metaObject()->className(), "GTSDisplay");
    const auto* const add = widget->findChild<QPushButton*>(S("addModule"));
    ASSERT_NE(add, nullptr);
    EXPECT_FALSE(add->isEnabled());  // there is nothing to add a module to
    EXPECT_EQ(Choose(), nullptr);
}

TEST_F(InDesigner, TheMenuChoosesAPathThatCanBeUndone) {
    ASSERT_NO_FATAL_FAILURE(Open(plugin::Form("VCLabel", plugin::PathProperty("valuePath", "/Server/Mode"))));
    ASSERT_NE(Choose(), nullptr);
    ChoosePath("/Server/State");
    EXPECT_EQ(widget->property("valuePath").toString(), S("/Server/State"));
    // Never a text, which would be translated.
    EXPECT_TRUE(form->contents().contains(S("<cstring>/Server/State</cstring>")));
    form->commandHistory()->undo();
    EXPECT_EQ(widget->property("valuePath").toString(), S("/Server/Mode"));
}

TEST_F(InDesigner, TheMenuAddsAPathToAList) {
    ASSERT_NO_FATAL_FAILURE(Open(plugin::Form("MCSMpxORVStatusListDisplay", QByteArray())));
    ASSERT_NE(Choose(), nullptr);
    ChoosePath("/Server/StaticMpxORVs");
    ChoosePath("/Server/DynamicMpxORVs");
    ChoosePath("/Server/DynamicMpxORVs");
    EXPECT_EQ(widget->property("valuePaths").toString(), S("/Server/StaticMpxORVs,/Server/DynamicMpxORVs"));
    ASSERT_NO_FATAL_FAILURE(Open(form->contents().toUtf8()));
    EXPECT_EQ(widget->property("valuePaths").toString(), S("/Server/StaticMpxORVs,/Server/DynamicMpxORVs"));
}

TEST_F(InDesigner, NothingThatWasEnteredToReachAServerIsInTheForm) {
    ASSERT_NO_FATAL_FAILURE(Open(plugin::Form("VCLabel", QByteArray())));
    const auto enter = [](QDialog& dialog) {
        dialog.findChild<QLineEdit*>(S("User"))->setText(S("alice"));
        dialog.findChild<QLineEdit*>(S("Token"))->setText(S("secret"));
        dialog.findChild<QLineEdit*>(S("ServerAddress"))->setText(S("nowhere.example"));
        dialog.findChild<QLineEdit*>(S("Path"))->setText(S("/Server/State"));
        dialog.accept();
    };
    WithModalDialog<QDialog>([this] { Choose()->trigger(); }, enter);
    const QString saved = form->contents();
    EXPECT_TRUE(saved.contains(S("/Server/State")));
    for (const char* const entered : {"alice", "secret", "nowhere"})
        EXPECT_FALSE(saved.contains(S(entered))) << entered;
}

}  // namespace
