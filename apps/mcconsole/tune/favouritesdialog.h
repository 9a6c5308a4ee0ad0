// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/tune/favouritesmodel.h>

#include <QtWidgets/QDialog>

class QLabel;
class QPushButton;
class QTableView;

/// Favourites are named, added, removed and put in order here; the book has them once that is confirmed. GUI
/// thread.
class FavouritesDialog : public QDialog {
    Q_OBJECT

  public:
    /// Edits a copy of what \a book has; the book is not owned, and outlives the dialog. \a fresh, in Hz, is
    /// what a new one begins with.
    FavouritesDialog(FrequencyBook& book, double fresh, QWidget* parent = nullptr);

    /// Adds one, whose name can be typed at once.
    void Add();
    void accept() override;

  private:
    QWidget* BuildTable();
    QWidget* BuildButtons();
    void Remove();
    void Move(int count);
    int GetRow() const;
    void ShowState();

    FrequencyBook& m_book;
    const std::vector<FrequencyBook::Favourite> m_before;
    double m_fresh;
    FavouritesModel* m_model;
    QTableView* m_table = nullptr;
    QPushButton* m_rename = nullptr;
    QPushButton* m_remove = nullptr;
    QPushButton* m_up = nullptr;
    QPushButton* m_down = nullptr;
    QLabel* m_problem = nullptr;
};
