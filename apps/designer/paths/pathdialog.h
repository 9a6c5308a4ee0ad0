// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/designer/paths/pathsession.h>

#include <QtWidgets/QDialog>

struct BoundWidget;
class PathModel;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QTreeView;

/// Has a path chosen for a widget, from the tree of a running server or typed. What is entered to reach the
/// server is kept nowhere, but for the address until the process ends. GUI thread only.
class PathDialog final : public QDialog {
    Q_OBJECT

  public:
    /// For a widget that is a \a widget, and has the path \a path so far.
    PathDialog(const BoundWidget& widget, const QString& path, QWidget* parent);
    ~PathDialog() override;

    QString GetPath() const;
    /// What the server has there, a content::EContent; None if that is not known.
    unsigned GetContent() const;

    PathSession& GetSession() { return m_session; }

  private:
    void Build();
    QLayout* BuildConnection();
    void BuildTree();
    QLineEdit* AddField(const char* name, int longest);
    void ChooseDefault(const QWidget* left, const QWidget* focused);
    void Connect();
    VtClientOptions Options() const;
    void ShowState();
    QString StateText() const;
    void ShowTree();
    void ShowPath();
    void Filter(const QString& text);
    void TakeRow(const QModelIndex& row);
    void Judge();
    QString FindProblem() const;

    const BoundWidget& m_widget;
    PathSession m_session;
    PathModel* m_model;
    QSortFilterProxyModel* m_shown;
    QTimer m_treeTimer;     ///< several changes of the tree are shown at once
    QTimer m_contentTimer;  ///< contents are looked at again
    QLineEdit* m_address;
    QLineEdit* m_user;
    QLineEdit* m_token;
    QLineEdit* m_caFile;
    QPushButton* m_connect = nullptr;
    QLabel* m_status;
    QLineEdit* m_filter;
    QTreeView* m_view;
    QLineEdit* m_path;
    QLabel* m_problem;
    QPushButton* m_ok = nullptr;
};
