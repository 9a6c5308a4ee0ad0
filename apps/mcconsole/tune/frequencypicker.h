// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QMenu>
#include <QtWidgets/QWidget>

class FrequencyBook;
class QToolButton;
class Tuning;

/// Offers beside the frequency field what was granted last, and the favourites. Whichever is chosen is what
/// the operator wants from then on; nothing is sent. GUI thread.
class FrequencyPicker : public QWidget {
    Q_OBJECT

  public:
    /// Neither is owned; both outlive the picker.
    FrequencyPicker(Tuning& tuning, FrequencyBook& book, QWidget* parent = nullptr);

    /// Stands behind \a before and before \a after in the order of Tab.
    void BeNextTo(QWidget& before, QWidget& after);
    // As by a click, for keys.
    void ShowRecent();
    void ShowFavourites();
    /// Asks for a name for what is wanted, or else tuned to.
    void AddFavourite();
    void EditFavourites();

  Q_SIGNALS:
    /// One was chosen.
    void Chosen();

  private:
    QToolButton* AddButton(const char* name, const QString& text, const QString& tip, QMenu& menu);
    void FillRecent();
    void FillFavourites();
    void AddChoice(QMenu& menu, const QString& name, double hz);
    void Choose(double hz);
    static void PopUp(QToolButton& button, QMenu& menu);
    double FrequencyToKeep() const;

    Tuning& m_tuning;
    FrequencyBook& m_book;
    QMenu m_recentMenu;
    QMenu m_favouritesMenu;
    QToolButton* m_recent;
    QToolButton* m_favourites;
};
