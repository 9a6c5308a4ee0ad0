// SPDX-License-Identifier: Apache-2.0
// What Qt itself says in dialogs and menus, where its own catalogues are not installed.
#include <apps/pages/guimodule.h>

#include <platform/values/tree.h>

#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <gmock/gmock.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QLocale>
#include <QtCore/QTemporaryDir>
#include <QtGui/QContextMenuEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTreeView>

#include <algorithm>
#include <iterator>
#include <set>
#include <string>

namespace {

using testing::IsSubsetOf;

using Texts = std::set<std::string>;

void Add(Texts& texts, const QString& text) {
    if (!text.isEmpty()) texts.insert(text.toStdString());
}

/// All that can be read, or heard, of \a widget and what is in it.
Texts TextsOf(const QWidget& widget) {
    Texts texts;
    for (const auto* child : widget.findChildren<QWidget*>()) {
        Add(texts, child->toolTip());
        Add(texts, child->accessibleName());
        Add(texts, child->accessibleDescription());
    }
    for (const auto* label : widget.findChildren<QLabel*>())
        Add(texts, label->text());
    for (const auto* button : widget.findChildren<QAbstractButton*>())
        Add(texts, button->text());
    for (const auto* action : widget.findChildren<QAction*>())
        Add(texts, action->text());
    for (const auto* menu : widget.findChildren<QMenu*>())
        Add(texts, menu->title());
    return texts;
}

class QtTextsTest : public testing::Test {
  protected:
    QtTextsTest() {
        for (const char* const name : {"with.csv", "without"}) {
            QFile file(m_directory.filePath(QString::fromLatin1(name)));
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        }
        EXPECT_TRUE(QDir(m_directory.path()).mkdir(QStringLiteral("directory")));
    }
    ~QtTextsTest() override { QLocale::setDefault(QLocale::c()); }

    /// Of a dialog that asks for a file, in the language \a locale.
    Texts OfFileDialog(const char* locale, QFileDialog::AcceptMode mode) {
        const GuiModule module(QString::fromLatin1(locale));
        QFileDialog dialog(nullptr, QString(), m_directory.path());
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        dialog.setAcceptMode(mode);
        dialog.setViewMode(QFileDialog::Detail);
        dialog.show();
        const auto* const list = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
        EXPECT_TRUE(WaitUntil([&] { return list->model()->rowCount(list->rootIndex()) == 3; }));
        Texts texts = TextsOf(dialog);
        const QAbstractItemModel& files = *list->model();
        for (int column = 0; column < files.columnCount(); ++column)
            Add(texts, files.headerData(column, Qt::Horizontal).toString());
        constexpr int type = 2;  // behind it are dates, and before it sizes, whose unit Qt never translates
        for (int row = 0; row < files.rowCount(list->rootIndex()); ++row)
            Add(texts, files.index(row, type, list->rootIndex()).data().toString());
        return texts;
    }

    /// Of the menu of a scroll bar.
    static Texts OfScrollBar(const char* locale, Qt::Orientation orientation) {
        const GuiModule module(QString::fromLatin1(locale));
        QScrollBar bar(orientation);
        bar.show();
        Texts texts;
        QMetaObject::invokeMethod(
            &bar,
            [&] {
                QWidget* const menu = QApplication::activePopupWidget();
                if (menu == nullptr) return;
                for (const QAction* action : menu->actions())
                    Add(texts, action->text());
                menu->close();
            },
            Qt::QueuedConnection);
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(1, 1), bar.mapToGlobal(QPoint(1, 1)));
        QCoreApplication::sendEvent(&bar, &event);
        EXPECT_GE(texts.size(), 7U);
        return texts;
    }

    static Texts Common(const Texts& one, const Texts& other) {
        Texts common;
        std::set_intersection(one.begin(), one.end(), other.begin(), other.end(),
                              std::inserter(common, common.end()));
        return common;
    }

    QTemporaryDir m_directory;
    values::Tree m_tree;
};

TEST_F(QtTextsTest, DialogsForFilesAreGermanThroughout) {
    for (const QFileDialog::AcceptMode mode : {QFileDialog::AcceptOpen, QFileDialog::AcceptSave}) {
        const Texts english = OfFileDialog("en", mode);
        EXPECT_EQ(english.count("Date Modified"), 1U) << "what files are called is the system's on Windows";
        EXPECT_THAT(Common(english, OfFileDialog("de", mode)), IsSubsetOf({"Name"}));
    }
}

TEST_F(QtTextsTest, MenusOfScrollBarsAreGerman) {
    for (const Qt::Orientation orientation : {Qt::Horizontal, Qt::Vertical})
        EXPECT_THAT(Common(OfScrollBar("en", orientation), OfScrollBar("de", orientation)),
                    testing::IsEmpty());
}

}  // namespace
