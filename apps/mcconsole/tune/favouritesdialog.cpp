// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/tune/favouritesdialog.h>

#include <platform/widgets/plaintextdelegate.h>

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

namespace {

constexpr int RowsOfFavourites = 10;   // that are seen
constexpr int CharactersOfAName = 24;  // that are seen
constexpr int CharactersOfAFrequency = 20;

}  // namespace

FavouritesDialog::FavouritesDialog(FrequencyBook& book, double fresh, QWidget* parent)
    : QDialog(parent),
      m_book(book),
      m_before(book.GetFavourites()),
      m_fresh(fresh),
      m_model(new FavouritesModel(m_before, this)) {
    setObjectName(QStringLiteral("FavouritesDialog"));
    setWindowTitle(tr("Favourite frequencies"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    m_problem = new QLabel(this);
    m_problem->setObjectName(QStringLiteral("FavouritesProblem"));
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setWordWrap(true);
    m_problem->setMinimumHeight(2 * fontMetrics().lineSpacing());  // so that nothing moves
    auto* const decision = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    auto* const middle = new QHBoxLayout;
    middle->addWidget(BuildTable(), 1);
    middle->addWidget(BuildButtons());
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(middle);
    layout->addWidget(m_problem);
    layout->addWidget(decision);
    connect(decision, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(decision, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_model, &FavouritesModel::Entered, m_problem, &QLabel::setText);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &FavouritesDialog::ShowState);
    if (m_model->rowCount() > 0) m_table->selectRow(0);
    ShowState();
}

QWidget* FavouritesDialog::BuildTable() {
    m_table = new QTableView(this);
    m_table->setObjectName(QStringLiteral("FavouritesTable"));
    m_table->setAccessibleName(windowTitle());
    m_table->setModel(m_model);
    m_table->setItemDelegate(new PlainTextDelegate(m_table));
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setTabKeyNavigation(false);
    m_table->setWordWrap(false);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->horizontalHeader()->setSectionResizeMode(FavouritesModel::Name, QHeaderView::Stretch);
    const int character = fontMetrics().averageCharWidth();
    m_table->setColumnWidth(FavouritesModel::Frequency, CharactersOfAFrequency * character);
    m_table->setMinimumSize((CharactersOfAName + CharactersOfAFrequency) * character,
                            RowsOfFavourites * m_table->verticalHeader()->defaultSectionSize());
    return m_table;
}

QWidget* FavouritesDialog::BuildButtons() {
    auto* const box = new QWidget(this);
    auto* const column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const char* name, const QString& text) {
        auto* const button = new QPushButton(text, box);
        button->setObjectName(QString::fromLatin1(name));
        button->setAutoDefault(false);  // Enter ends a name that is typed
        column->addWidget(button);
        return button;
    };
    connect(add("AddFavourite", tr("&Add")), &QPushButton::clicked, this, &FavouritesDialog::Add);
    m_rename = add("RenameFavourite", tr("Re&name"));
    connect(m_rename, &QPushButton::clicked, this,
            [this] { m_table->edit(m_model->index(GetRow(), FavouritesModel::Name)); });
    m_remove = add("RemoveFavourite", tr("&Remove"));
    connect(m_remove, &QPushButton::clicked, this, &FavouritesDialog::Remove);
    m_up = add("FavouriteUp", tr("&Up"));
    connect(m_up, &QPushButton::clicked, this, [this] { Move(-1); });
    m_down = add("FavouriteDown", tr("&Down"));
    connect(m_down, &QPushButton::clicked, this, [this] { Move(1); });
    column->addStretch();
    return box;
}

int FavouritesDialog::GetRow() const {
    return m_table->currentIndex().row();
}

void FavouritesDialog::Add() {
    const int row = m_model->Add(m_fresh);
    if (row < 0) return;
    m_problem->clear();
    m_table->setCurrentIndex(m_model->index(row, FavouritesModel::Name));
    m_table->setFocus();
    m_table->edit(m_table->currentIndex());
}

void FavouritesDialog::Remove() {
    m_model->Remove(GetRow());
    ShowState();
}

void FavouritesDialog::Move(int count) {
    m_table->selectRow(m_model->Move(GetRow(), count));
    ShowState();
}

void FavouritesDialog::ShowState() {
    const int row = GetRow();
    m_remove->setEnabled(row >= 0);
    m_rename->setEnabled(row >= 0);
    m_up->setEnabled(row > 0);
    m_down->setEnabled(row >= 0 && row + 1 < m_model->rowCount());
}

void FavouritesDialog::accept() {
    m_table->setCurrentIndex(QModelIndex());  // ends what is being typed, and takes it
    m_book.ChangeFavourites(m_before, m_model->GetFavourites());
    QDialog::accept();
}
