// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/suppression/connectiontest.h>
#include <apps/mcserver/suppression/inputmodel.h>

#include <QtWidgets/QWidget>

#include <functional>

class NoticeBar;
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

    /// Writes the table to \a file. What becomes of it is said above the table, as of the next.
    void ExportTo(const QString& file);
    void ImportFrom(const QString& file);

  Q_SIGNALS:
    /// The user has changed several cells at once, as \a what says; \a undo takes it back. That may be called
    /// when the view and the plant are gone.
    void Acted(const QString& what, const std::function<void()>& undo);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QHBoxLayout* BuildButtons();
    void Paste();
    void TestConnection();
    void OnAnswered(quint32 bits);
    void OnFailed(const QString& reason);
    void ChooseExport();
    void ChooseImport();
    void Tell(const QString& reason);
    void EnableTest();

    InputModel m_model;
    ConnectionTest m_test;
    ModuleSettings m_tested;
    NoticeBar* m_notice;
    QTableView* m_table;
    QPushButton* m_testButton = nullptr;
};
