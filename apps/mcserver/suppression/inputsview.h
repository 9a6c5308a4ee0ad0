// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/suppression/connectiontest.h>
#include <apps/mcserver/suppression/inputmodel.h>
#include <apps/pages/noticebar.h>

#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <functional>
#include <optional>

class QHBoxLayout;
class QPushButton;
class QTableView;

/// The inputs of the data modules in a table in which nothing doubtful can be entered, with what is needed to
/// fill it: the clipboard, files, and a test of a module. GUI thread.
class InputsView : public QWidget {
    Q_OBJECT

  public:
    /// \a plant is not owned, and outlives the view.
    InputsView(SuppressionPlant& plant, const FrequencyRange& range, QWidget* parent = nullptr);

    /// Writes the table to \a file. What becomes of it is said below the table, as of the next.
    void ExportTo(const QString& file);
    void ImportFrom(const QString& file);
    /// Takes away what is said below the table: something else was done since.
    void ForgetSaid();

  Q_SIGNALS:
    /// The user has changed several cells at once, as \a what says; \a undo takes it back. That may be called
    /// when the view and the plant are gone.
    void Acted(const QString& what, const std::function<void()>& undo);
    /// Something was entered, or refused.
    void Entered();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QHBoxLayout* BuildButtons();
    void Paste();
    void FitModules();
    /// In place of what was told, also of a test.
    void Say(NoticeBar::ESeverity severity, const QString& text);
    /// That \a text was taken holds until that is undone, and for a while.
    void SayTaken(const QString& text);
    void ForgetTaken();
    void SayOfTest(NoticeBar::ESeverity severity, const QString& text, EModuleState told);
    void ForgetOldTest();
    void TestConnection();
    void OnAnswered(quint32 bits);
    void OnFailed(const QString& reason);
    void ChooseExport();
    void ChooseImport();
    void Tell(const QString& reason);
    static QString TellChanged(int cells, const std::vector<double>& cleared);
    void EnableTest();

    /// The module that was current when the outcome of a test came, and what was known of it.
    struct TestShown {
        ModuleSettings module;
        EModuleState state = EModuleState::Disconnected;
        EModuleState told = EModuleState::Disconnected;  ///< by the test
    };

    InputModel m_model;
    ConnectionTest m_test;
    ModuleSettings m_tested;
    std::optional<TestShown> m_shownTest;
    QTimer m_taken;
    bool m_isTaken = false;  ///< it is said that something was
    NoticeBar* m_notice;
    QTableView* m_table;
    QPushButton* m_testButton = nullptr;
};
