// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/tune/frequencypicker.h>

#include <apps/mcconsole/tune/favouritesdialog.h>
#include <apps/mcconsole/tune/frequencybook.h>
#include <apps/mcconsole/tune/tuning.h>

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QToolButton>

namespace {

constexpr int MostNumberedChoices = 9;        // that have a digit as a key
constexpr double UsualFavourite = 121500000;  // Hz, where nothing is wanted yet

/// Within the text of a menu, whatever somebody chose for a name.
QString WithoutMarks(QString name) {
    return name.replace(QLatin1Char('&'), QLatin1String("&&")).replace(QLatin1Char('\t'), QLatin1Char(' '));
}

void AddNothing(QMenu& menu, const QString& text) {
    menu.addAction(text)->setEnabled(false);
}

}  // namespace

FrequencyPicker::FrequencyPicker(Tuning& tuning, FrequencyBook& book, QWidget* parent)
    : QWidget(parent),
      m_tuning(tuning),
      m_book(book),
      m_recent(AddButton("RecentFrequencies", tr("Recent"),
                         tr("The frequencies that were granted last. Choosing one asks for nothing yet."),
                         m_recentMenu)),
      m_favourites(AddButton("FavouriteFrequencies", tr("Favourites"),
                             tr("Frequencies with names of yours. Choosing one asks for nothing yet."),
                             m_favouritesMenu)) {
    m_recentMenu.setObjectName(QStringLiteral("RecentMenu"));
    m_favouritesMenu.setObjectName(QStringLiteral("FavouritesMenu"));
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_recent);
    layout->addWidget(m_favourites);
    connect(&m_recentMenu, &QMenu::aboutToShow, this, &FrequencyPicker::FillRecent);
    connect(&m_favouritesMenu, &QMenu::aboutToShow, this, &FrequencyPicker::FillFavourites);
}

void FrequencyPicker::BeNextTo(QWidget& before, QWidget& after) {
    setTabOrder(&before, m_recent);
    setTabOrder(m_recent, m_favourites);
    setTabOrder(m_favourites, &after);
}

QToolButton* FrequencyPicker::AddButton(const char* name, const QString& text, const QString& tip,
                                        QMenu& menu) {
    auto* const button = new QToolButton(this);
    button->setObjectName(QString::fromLatin1(name));
    button->setText(text);
    button->setAccessibleName(text);
    button->setToolTip(tip);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    menu.setAccessibleName(text);
    connect(button, &QToolButton::clicked, this, [button, &menu] { PopUp(*button, menu); });
    return button;
}

/// The first choice is the current one, so that Enter takes it.
void FrequencyPicker::PopUp(QToolButton& button, QMenu& menu) {
    menu.popup(button.mapToGlobal(QPoint(0, button.height())));
    for (QAction* const action : menu.actions()) {
        if (!action->isEnabled() || action->isSeparator()) continue;
        return menu.setActiveAction(action);
    }
}

void FrequencyPicker::ShowRecent() {
    PopUp(*m_recent, m_recentMenu);
}

void FrequencyPicker::ShowFavourites() {
    PopUp(*m_favourites, m_favouritesMenu);
}

void FrequencyPicker::AddChoice(QMenu& menu, const QString& name, double hz) {
    const int number = menu.actions().size() + 1;
    const QString key = number <= MostNumberedChoices ? QStringLiteral("&%1  ").arg(number) : QString();
    const QString shown = Tuning::Shown(hz);
    QString text = key + (name.isEmpty() ? shown : WithoutMarks(name) + QLatin1Char('\t') + shown);
    const bool isPossible = m_tuning.IsInRange(hz);
    if (!isPossible) text += QLatin1Char(' ') + tr("(outside the range of this device)");
    QAction* const action = menu.addAction(text, this, [this, hz] { Choose(hz); });
    action->setEnabled(isPossible);
}

void FrequencyPicker::FillRecent() {
    m_book.Refresh();
    m_recentMenu.clear();
    for (const double hz : m_book.GetRecent())
        AddChoice(m_recentMenu, QString(), hz);
    if (m_recentMenu.isEmpty()) AddNothing(m_recentMenu, tr("None was granted yet"));
}

void FrequencyPicker::FillFavourites() {
    m_book.Refresh();
    m_favouritesMenu.clear();
    for (const FrequencyBook::Favourite& favourite : m_book.GetFavourites())
        AddChoice(m_favouritesMenu, favourite.name, favourite.hz);
    if (m_favouritesMenu.isEmpty()) AddNothing(m_favouritesMenu, tr("There are none yet"));
    m_favouritesMenu.addSeparator();
    m_favouritesMenu.addAction(tr("&Add %1...").arg(Tuning::Shown(FrequencyToKeep())), this,
                               &FrequencyPicker::AddFavourite);
    m_favouritesMenu.addAction(tr("&Edit..."), this, &FrequencyPicker::EditFavourites);
}

void FrequencyPicker::Choose(double hz) {
    m_tuning.Enter(Tuning::Shown(hz));
    Q_EMIT Chosen();
}

double FrequencyPicker::FrequencyToKeep() const {
    const FrequencyText wanted = m_tuning.GetWanted();
    if (wanted.IsFrequency() && FrequencyBook::IsPossible(wanted.GetHz())) return wanted.GetHz();
    return m_tuning.GetActual().value_or(UsualFavourite);
}

void FrequencyPicker::AddFavourite() {
    m_book.Refresh();
    auto* const dialog = new FavouritesDialog(m_book, FrequencyToKeep(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
    dialog->Add();
}

void FrequencyPicker::EditFavourites() {
    m_book.Refresh();
    auto* const dialog = new FavouritesDialog(m_book, FrequencyToKeep(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}
