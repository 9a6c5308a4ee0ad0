// SPDX-License-Identifier: Apache-2.0
#include <tests/devicecontrol/multichannelserver/common/logdisplaytest.h>
#include <tests/support/dialogs/modaldriver.h>

#include <platform/widgets/guibase.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>

#include <deque>
#include <functional>
#include <ostream>

namespace {

#ifdef Q_OS_WIN
constexpr bool NamesMayHoldTags = false;
#else
constexpr bool NamesMayHoldTags = true;
#endif

class LogDisplaySaving : public LogDisplayTest {
  protected:
    LogDisplaySaving() {
        GuiBase::Instance().SetUseNativeDialogs(false);
        QDir::setCurrent(m_directory.path());
        Bind();
        Log(QStringLiteral("plain"));
        Log(QStringLiteral("<b>bold</b> &amp; more"));
    }
    ~LogDisplaySaving() override {
        QDir::setCurrent(m_before);
        GuiBase::Instance().SetUseNativeDialogs(true);
    }

    QString PathOf(const char* name) const { return m_directory.filePath(QString::fromUtf8(name)); }
    static QByteArray ContentOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    static void Write(const QString& path, const QByteArray& content) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    /// Types \a path into the file dialog and saves.
    static ModalDriver::Step ChooseFile(const QString& path) {
        return [path](QWidget& dialog) {
            auto* const edit = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            EXPECT_NE(edit, nullptr);
            edit->setText(path);
            QTest::keyClick(edit, Qt::Key_Return);
            return true;
        };
    }
    /// The file dialog's own question comes before ours.
    static bool IsDialogsOwnQuestion(const QWidget& dialog) {
        return qobject_cast<QFileDialog*>(dialog.parentWidget()) != nullptr;
    }
    static bool AgreeInDialog(QWidget& dialog) {
        EXPECT_TRUE(IsDialogsOwnQuestion(dialog));
        QTest::mouseClick(dynamic_cast<QMessageBox&>(dialog).button(QMessageBox::Yes), Qt::LeftButton);
        return true;
    }
    static QAbstractButton& ButtonOf(QWidget& question, const char* text) {
        for (QAbstractButton* const button : dynamic_cast<QMessageBox&>(question).buttons())
            if (button->text() == QString::fromLatin1(text)) return *button;
        ADD_FAILURE() << "no button " << text;
        return *dynamic_cast<QMessageBox&>(question).buttons().first();
    }

    static constexpr const char* s_saved = "plain\nbold & more";

    QString m_before = QDir::currentPath();
    QTemporaryDir m_directory;
};

TEST_F(LogDisplaySaving, WritesPlainTextWhateverTheNameSays) {
    for (const char* name : {"log.html", "log.txt", "log"}) {
        m_display.SlotSaveLogToFile(PathOf(name));
        EXPECT_EQ(ContentOf(PathOf(name)), QByteArray(s_saved)) << name;
    }
}

TEST_F(LogDisplaySaving, ReplacesWhatTheFileHeld) {
    Write(PathOf("log.html"), QByteArray(10000, 'x'));
    m_display.SlotSaveLogToFile(PathOf("log.html"));
    EXPECT_EQ(ContentOf(PathOf("log.html")), QByteArray(s_saved));
}

// The window may not have laid out all of it yet.
TEST_F(LogDisplaySaving, WritesLongMessagesWholeAndTheTextOfAnyMarkup) {
    m_display.show();
    QByteArray saved(s_saved);
    for (const char letter : {'a', 'b', 'c', 'd'}) {
        Log(QString(65536, QLatin1Char(letter)));
        saved += '\n' + QByteArray(65536, letter);
    }
    Log(QStringLiteral("<style>h1{color:red}</style><h1 title='2026'>heading</h1>"));
    saved += "\nheading";
    m_display.SlotSaveLogToFile(PathOf("log.html"));
    EXPECT_EQ(ContentOf(PathOf("log.html")), saved);
    Log(QStringLiteral("<table><tr><td>left<td>right</table>"));
    m_display.SlotSaveLogToFile(PathOf("log.html"));
    EXPECT_TRUE(ContentOf(PathOf("log.html")).simplified().endsWith("heading left right"));
}

TEST_F(LogDisplaySaving, AFileThatCannotBeOpenedIsSilentlyNotWritten) {
    const ModalDriver nobody;
    m_display.SlotSaveLogToFile(PathOf("no/such/directory/log.html"));
    m_display.SlotSaveLogToFile(m_directory.path());
    m_display.SlotSaveLogToFile(QString());
    EXPECT_TRUE(QDir(m_directory.path()).isEmpty());
}

TEST_F(LogDisplaySaving, AsksForAFileWithAProposalAndOneFilter) {
    const ModalDriver user({[](QWidget& dialog) {
        const auto& files = dynamic_cast<QFileDialog&>(dialog);
        EXPECT_EQ(files.windowTitle(), QStringLiteral("Save log messages..."));
        EXPECT_EQ(files.acceptMode(), QFileDialog::AcceptSave);
        EXPECT_EQ(files.nameFilters(), QStringList{QStringLiteral("HTML file (*.html)")});
        EXPECT_TRUE(files.testOption(QFileDialog::DontUseNativeDialog));
        EXPECT_EQ(files.directory().canonicalPath(), QDir::current().canonicalPath());
        EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text(),
                  QStringLiteral("mcslog.html"));
        QTest::keyClick(&dialog, Qt::Key_Escape);
        return true;
    }});
    QTest::mouseClick(&Button("SaveLogButton"), Qt::LeftButton);
    EXPECT_TRUE(QDir(m_directory.path()).isEmpty());
}

TEST_F(LogDisplaySaving, SavesInTheChosenFile) {
    const ModalDriver user({ChooseFile(PathOf("chosen.html"))});
    QTest::mouseClick(&Button("SaveLogButton"), Qt::LeftButton);
    EXPECT_EQ(ContentOf(PathOf("chosen.html")), QByteArray(s_saved));
}

TEST_F(LogDisplaySaving, AsksBeforeItOverwritesAndCancelIsTheDefault) {
    const QString path = PathOf("old.html");
    Write(path, "old");
    const ModalDriver user({ChooseFile(path), AgreeInDialog, [path](QWidget& dialog) {
                                const auto& question = dynamic_cast<QMessageBox&>(dialog);
                                EXPECT_FALSE(IsDialogsOwnQuestion(dialog));
                                EXPECT_EQ(question.icon(), QMessageBox::Warning);
                                EXPECT_EQ(question.text(), QStringLiteral("File '%1' already exists.\n"
                                                                          "Do you want to overwrite it?")
                                                               .arg(path));
                                EXPECT_EQ(question.buttons().size(), 2);
                                EXPECT_TRUE(
                                    dynamic_cast<QPushButton&>(ButtonOf(dialog, "Cancel")).isDefault());
                                ButtonOf(dialog, "Overwrite");
                                QTest::keyClick(&dialog, Qt::Key_Return);
                                return true;
                            }});
    m_display.SlotSaveLog();
    EXPECT_EQ(ContentOf(path), QByteArray("old"));
}

TEST_F(LogDisplaySaving, EscapeLeavesTheFileAlone) {
    const QString path = PathOf("old.html");
    Write(path, "old");
    const ModalDriver user({ChooseFile(path), AgreeInDialog, [](QWidget& dialog) {
                                QTest::keyClick(&dialog, Qt::Key_Escape);
                                return true;
                            }});
    m_display.SlotSaveLog();
    EXPECT_EQ(ContentOf(path), QByteArray("old"));
}

struct EndRow {
    const char* name;
    int dialogs;  ///< that are answered before: the file dialog, its own question
};
void PrintTo(const EndRow& row, std::ostream* stream) {
    *stream << row.name;
}

/// Saving over a file, which ends without an answer.
class LogDisplaySavingEnds : public LogDisplaySaving, public testing::WithParamInterface<EndRow> {
  protected:
    LogDisplaySavingEnds() { Write(m_path, "old"); }

    /// What the user does until \a end happens.
    std::deque<ModalDriver::Step> Until(std::function<void()> end) const {
        std::deque<ModalDriver::Step> steps = {ChooseFile(m_path), AgreeInDialog};
        steps.resize(static_cast<std::size_t>(GetParam().dialogs));
        steps.push_back([end](QWidget&) {
            end();
            return true;
        });
        return steps;
    }

    const QString m_path = PathOf("old.html");
};

INSTANTIATE_TEST_SUITE_P(, LogDisplaySavingEnds,
                         testing::Values(EndRow{"InTheFileDialog", 0}, EndRow{"InTheDialogsQuestion", 1},
                                         EndRow{"InOurQuestion", 2}),
                         [](const auto& row) { return std::string(row.param.name); });

// A dialog that ends with the application gives an answer that nobody gave.
TEST_P(LogDisplaySavingEnds, WithTheApplicationAndLeavesTheFileAlone) {
    const ModalDriver user(Until([] { QCoreApplication::quit(); }));
    QTimer::singleShot(0, &m_display, &MCSLogDisplay::SlotSaveLog);
    QCoreApplication::exec();
    EXPECT_EQ(ContentOf(m_path), QByteArray("old"));
}

TEST_P(LogDisplaySavingEnds, WithTheDisplayAndLeavesTheFileAlone) {
    QWidget window;
    QPointer<MCSLogDisplay> display = new MCSLogDisplay(&window);
    display->SetLogMessage_ValuePath(s_path);
    const ModalDriver user(Until([&display] { delete display; }));
    display->SlotSaveLog();
    EXPECT_EQ(display, nullptr);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(ContentOf(m_path), QByteArray("old"));
}

TEST_F(LogDisplaySaving, OverwritesWhenTold) {
    const QString path = PathOf("old.html");
    Write(path, "old and longer than what is to be saved");
    const ModalDriver user({ChooseFile(path), AgreeInDialog, [](QWidget& dialog) {
                                QTest::mouseClick(&ButtonOf(dialog, "Overwrite"), Qt::LeftButton);
                                return true;
                            }});
    m_display.SlotSaveLog();
    EXPECT_EQ(ContentOf(path), QByteArray(s_saved));
}

// Deliberate: any other text of a question may be markup.
TEST_F(LogDisplaySaving, MarkupInAFileNameIsReadAsItIs) {
    const char* const name = NamesMayHoldTags ? "<b>old<b>&lt;.html" : "&lt;b&gt;old.html";
    const QString path = PathOf(name);
    Write(path, "old");
    const ModalDriver user({ChooseFile(path), AgreeInDialog, [path](QWidget& dialog) {
                                QTextDocument shown;
                                shown.setHtml(dynamic_cast<QMessageBox&>(dialog).text());
                                EXPECT_TRUE(shown.toPlainText().contains(path));
                                QTest::keyClick(&dialog, Qt::Key_Escape);
                                return true;
                            }});
    m_display.SlotSaveLog();
}

TEST_F(LogDisplaySaving, TheServerMayGoWhileADialogIsOpen) {
    const ModalDriver user({[this](QWidget& dialog) {
        treeaccess::DeleteAt(QStringLiteral("/MultiChannelServer"));
        return ChooseFile(PathOf("gone.html"))(dialog);
    }});
    m_display.SlotSaveLog();
    EXPECT_EQ(ContentOf(PathOf("gone.html")), QByteArray(s_saved));
}

TEST_F(LogDisplaySaving, SavesThroughTheVirtualOperation) {
    struct Saver : MCSLogDisplay {
        void SlotSaveLogToFile(QString sFileName) override { m_fileName = sFileName; }
        QString m_fileName;
    };
    Saver saver;
    const ModalDriver user({ChooseFile(PathOf("virtual.html"))});
    saver.SlotSaveLog();
    EXPECT_EQ(saver.m_fileName, PathOf("virtual.html"));
    EXPECT_FALSE(QFile::exists(PathOf("virtual.html")));
}

}  // namespace
