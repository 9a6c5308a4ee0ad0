// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/inputmodel.h>

#include <apps/mcserver/suppression/inputcells.h>
#include <apps/mcserver/suppression/inputcsv.h>
#include <apps/mcserver/suppression/inputundo.h>
#include <apps/mcserver/suppression/pastedcells.h>

#include <devicecontrol/multichannelserver/common/gts/moduleidentity.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <QtCore/QPointer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <map>
#include <utility>

namespace {

QString NodeNameOf(const ModuleSettings& settings) {
    return ModuleIdentity{settings.type, settings.index, QString()}.NodeName();
}

}  // namespace

InputModel::InputModel(SuppressionPlant& plant, const FrequencyRange& range, QObject* parent)
    : QAbstractTableModel(parent), m_plant(plant), m_range(range), m_rules(range) {
    constexpr std::chrono::milliseconds refreshInterval(34);  // inputs change faster than people read
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(refreshInterval);
    connect(&m_refresh, &QTimer::timeout, this, &InputModel::Refresh);
    connect(&m_plant, &SuppressionPlant::SignalStatesChanged, this, [this] {
        if (!m_refresh.isActive()) m_refresh.start();
    });
    m_modules = m_plant.GetStates();
    m_unsupervised = m_plant.GetUnsupervisedFrequencies();
    CountRows();
}

void InputModel::CountRows() {
    m_rows.clear();
    for (std::size_t module = 0; module < m_modules.size(); ++module)
        for (std::size_t input = 0; input < m_modules[module].settings.frequencies.size(); ++input)
            m_rows.push_back({static_cast<int>(module), static_cast<int>(input)});
}

/// An input may not be watched any more, or again, because of another module's.
void InputModel::ShowUnsupervised() {
    std::vector<double> unsupervised = m_plant.GetUnsupervisedFrequencies();
    if (unsupervised == m_unsupervised) return;
    std::swap(m_unsupervised, unsupervised);
    if (rowCount() > 0) Q_EMIT dataChanged(index(0, State), index(rowCount() - 1, State));
}

/// Whoever edits a cell goes on with that, unless there are other rows now: the view would put the content
/// of every cell that is told of in place of what is being typed.
void InputModel::Refresh() {
    std::vector<ModuleState> modules = m_plant.GetStates();
    if (modules == m_modules) return;
    ShowUnsupervised();
    const auto isSameModule = [](const ModuleState& a, const ModuleState& b) {
        return NodeNameOf(a.settings) == NodeNameOf(b.settings) &&
               a.settings.frequencies.size() == b.settings.frequencies.size();
    };
    const bool hasSameRows =
        std::equal(modules.begin(), modules.end(), m_modules.begin(), m_modules.end(), isSameModule);
    if (!hasSameRows) beginResetModel();
    std::swap(m_modules, modules);
    if (!hasSameRows) {
        CountRows();
        return endResetModel();
    }
    for (int row = 0; row < rowCount(); ++row) {
        const auto module = static_cast<std::size_t>(m_rows[static_cast<std::size_t>(row)].module);
        if (m_modules[module] == modules[module]) continue;
        for (int column = 0; column < ColumnCount; ++column)
            if (inputcells::AreOther(modules[module], m_modules[module],
                                     m_rows[static_cast<std::size_t>(row)].input, column))
                Q_EMIT dataChanged(index(row, column), index(row, column));
    }
}

int InputModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int InputModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

const ModuleState& InputModel::GetModule(int row) const {
    return m_modules[static_cast<std::size_t>(m_rows[static_cast<std::size_t>(row)].module)];
}

QString InputModel::TextOf(const Row& row, int column) const {
    if (column == State) return lamplook::Text(LampOf(row));
    return inputcells::TextOf(m_modules[static_cast<std::size_t>(row.module)], row.input, column);
}

lamplook::ELamp InputModel::LampOf(const Row& row) const {
    const ModuleState& module = m_modules[static_cast<std::size_t>(row.module)];
    const double hz = module.settings.frequencies[static_cast<std::size_t>(row.input)];
    const bool isUnsupervised =
        std::binary_search(m_unsupervised.begin(), m_unsupervised.end(), std::floor(hz));
    return inputcells::LampOf(module, row.input, isUnsupervised);
}

QVariant InputModel::LookOfState(const Row& row, int role) const {
    if (role != Qt::ToolTipRole) return lamplook::Look(LampOf(row), role);
    const QString reason = inputcells::WhyNotLive(m_modules[static_cast<std::size_t>(row.module)]);
    return reason.isEmpty() ? QVariant() : reason;
}

QVariant InputModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) return QVariant();
    const Row& row = m_rows[static_cast<std::size_t>(index.row())];
    if (role == Qt::EditRole && index.column() == Module) return GetModule(index.row()).settings.label;
    if (role == Qt::DisplayRole || role == Qt::EditRole) return TextOf(row, index.column());
    if (role == Qt::TextAlignmentRole && index.column() == Frequency)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    const bool isMark = role == Qt::DecorationRole || role == Qt::ToolTipRole;
    if (isMark && index.column() == Frequency) {
        const QString doubt = DoubtOf(row);
        if (doubt.isEmpty()) return QVariant();
        if (role == Qt::ToolTipRole) return doubt;
        return QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
    }
    return index.column() == State ? LookOfState(row, role) : QVariant();
}

QString InputModel::DoubtOf(const Row& row) const {
    const double assigned = m_modules[static_cast<std::size_t>(row.module)]
                                .settings.frequencies[static_cast<std::size_t>(row.input)];
    if (assigned == 0.0 || !m_range.Excludes(assigned)) return QString();
    return tr("Outside what the device can be tuned to: it will never blank");
}

QVariant InputModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return QAbstractTableModel::headerData(section, orientation, role);
    return inputcells::TitleOf(section);
}

Qt::ItemFlags InputModel::flags(const QModelIndex& index) const {
    const bool isEdited = index.column() != Input && index.column() != State;
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.isValid() && isEdited ? flags | Qt::ItemIsEditable : flags;
}

bool InputModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole) return false;
    const QString text = value.toString();
    if (text == data(index, Qt::EditRole).toString()) return true;
    const std::vector<ModuleSettings> before = m_plant.GetSettings();
    if (!Enter(index, {{text}}).isEmpty()) return false;
    // Any other cell is in front of whoever typed into it; what is not supervised any more is not.
    const bool mayLose = !inputundo::FindCleared(before, m_plant.GetSettings()).empty();
    if (mayLose || index.column() == Address) OfferUndo(before);
    return true;
}

QString InputModel::RefusalOf(const Change& change) const {
    double hz = 0.0;
    switch (change.column) {
        case Module:
            return RefusalOfModuleName(change);
        case Address:
            return m_rules.RefusalOfAddress(change.text);
        case Name:
            return m_rules.RefusalOfName(change.text.trimmed());
        case Frequency:
            return m_rules.RefusalOfFrequency(change.text, change.plain, &hz);
        default:
            return tr("this column cannot be changed");
    }
}

QString InputModel::RefusalOfModuleName(const Change& change) const {
    const QString name = change.text.trimmed();
    const ModuleState& module = GetModule(change.row);
    for (const ModuleState& other : m_modules)
        if (&other != &module && !name.isEmpty() && other.settings.GetName() == name)
            return tr("another module is called \"%1\"").arg(name);
    return m_rules.RefusalOfName(name);
}

QString InputModel::RefusalOf(const std::vector<Change>& changes) const {
    for (const Change& change : changes) {
        const QString reason = RefusalOf(change);
        if (reason.isEmpty()) continue;
        const Row& row = m_rows[static_cast<std::size_t>(change.row)];
        return QStringLiteral("%1, %2: %3").arg(TextOf(row, Module), TextOf(row, Input), reason);
    }
    return QString();
}

void InputModel::Apply(const Change& change) {
    const Row row = m_rows[static_cast<std::size_t>(change.row)];
    const QString module = NodeNameOf(m_modules[static_cast<std::size_t>(row.module)].settings);
    double hz = 0.0;
    if (change.column == Module) m_plant.SetName(module, change.text.trimmed());
    if (change.column == Address) m_plant.SetAddress(module, change.text.trimmed());
    if (change.column == Name) m_plant.SetLabel(module, row.input, change.text.trimmed());
    if (change.column == Frequency && m_rules.RefusalOfFrequency(change.text, change.plain, &hz).isEmpty())
        m_plant.SetFrequency(module, row.input, hz);
}

QString InputModel::TooManyLines(std::size_t lines, int rows) {
    return rows == 1 ? tr("There are %1 lines for one row").arg(lines)
                     : tr("There are %1 lines for %2 rows").arg(lines).arg(rows);
}

QString InputModel::Enter(const QModelIndex& index, const std::vector<QStringList>& lines) {
    std::vector<Change> changes;
    QString reason = index.isValid() ? QString() : tr("Choose the cell to begin at first");
    int row = index.row();
    for (const QStringList& line : lines) {
        int column = index.column();
        for (const QString& text : line)
            changes.push_back({row, column++, text, FrequencyText::EPlainNumber::MegahertzOrHertz});
        if (reason.isEmpty() && row >= rowCount())
            reason = TooManyLines(lines.size(), rowCount() - index.row());
        ++row;
    }
    if (reason.isEmpty()) reason = RefusalOf(changes);
    return TakeAll(changes, reason);
}

QString InputModel::Paste(const QModelIndex& index, const QStringList& lines) {
    const bool isOneColumn = index.column() == Frequency || index.column() == Address;
    const pastedcells::Content content =
        isOneColumn ? pastedcells::ReadColumn(lines) : pastedcells::Read(lines);
    if (!content.problem.isEmpty()) return TakeAll({}, content.problem);
    const std::vector<ModuleSettings> before = m_plant.GetSettings();
    const QString reason = Enter(index, content.lines);
    OfferUndo(before);
    return reason;
}

void InputModel::OfferUndo(const std::vector<ModuleSettings>& before) {
    const std::vector<ModuleSettings> after = m_plant.GetSettings();
    const int cells = inputundo::CountCells(before, after);
    if (cells == 0) return;
    const std::vector<double> cleared = inputundo::FindCleared(before, after);
    Q_EMIT SignalManyChanged(cells, cleared, [plant = QPointer<SuppressionPlant>(&m_plant), before, after] {
        if (plant != nullptr) inputundo::TakeBack(*plant, before, after);
    });
}

QString InputModel::ToCsv() const {
    std::vector<inputcsv::Line> lines;
    for (const Row& row : m_rows)
        lines.push_back(
            {0, TextOf(row, Module), QString::number(row.input), TextOf(row, Name),
             inputcsv::FrequencyOf(m_modules[static_cast<std::size_t>(row.module)]
                                       .settings.frequencies[static_cast<std::size_t>(row.input)])});
    return inputcsv::Write(lines);
}

int InputModel::FindRow(const QString& title, const QString& input) const {
    const auto isIt = [&](const Row& row, const QString& name) {
        return name == title && QString::number(row.input) == input;
    };
    auto found = std::find_if(m_rows.begin(), m_rows.end(),
                              [&](const Row& row) { return isIt(row, TextOf(row, Module)); });
    if (found == m_rows.end())
        found = std::find_if(m_rows.begin(), m_rows.end(), [&](const Row& row) {
            return isIt(row,
                        inputcells::EarlierTitleOf(m_modules[static_cast<std::size_t>(row.module)].settings));
        });
    return found != m_rows.end() ? static_cast<int>(found - m_rows.begin()) : -1;
}

QString InputModel::FromCsv(const QStringList& lines) {
    constexpr auto plain = FrequencyText::EPlainNumber::Megahertz;  // as the column says
    std::vector<Change> changes;
    std::map<int, int> lineOfRow;
    QString reason;
    const inputcsv::Content content = inputcsv::Read(lines);
    for (const inputcsv::Line& line : content.lines) {
        const int row = FindRow(line.module, line.input);
        if (row < 0) reason = tr("there is no input %1 of a module %2").arg(line.input, line.module);
        const auto [first, isFirst] = lineOfRow.emplace(row, line.number);
        if (row >= 0 && !isFirst) reason = tr("this input stands in line %1 too").arg(first->second);
        for (const Change& change :
             {Change{row, Name, line.name, plain}, Change{row, Frequency, line.frequency, plain}}) {
            if (reason.isEmpty()) reason = RefusalOf(change);
            changes.push_back(change);
        }
        if (reason.isEmpty()) continue;
        reason = inputcsv::InLine(line.number, reason);
        break;
    }
    if (reason.isEmpty()) reason = content.problem;
    const std::vector<ModuleSettings> before = m_plant.GetSettings();
    TakeAll(changes, reason);
    OfferUndo(before);
    return reason;
}

QString InputModel::DoubtOfAddresses(const std::vector<Change>& changes) const {
    for (const Change& change : changes) {
        if (change.column != Address) continue;
        const ModuleSettings& module = GetModule(change.row).settings;
        for (const ModuleState& other : m_modules)
            if (&other.settings != &module && other.settings.address == module.address)
                return tr("%1 and %2 have one address: both read the same inputs")
                    .arg(module.GetName(), other.settings.GetName());
    }
    return QString();
}

/// All of it, unless there is a reason against any of it.
QString InputModel::TakeAll(const std::vector<Change>& changes, const QString& reason) {
    for (const Change& change : changes)
        if (reason.isEmpty()) Apply(change);
    Refresh();
    Q_EMIT SignalEntered(reason);
    const QString doubt = reason.isEmpty() ? DoubtOfAddresses(changes) : QString();
    if (!doubt.isEmpty()) Q_EMIT SignalDoubted(doubt);
    return reason;
}
