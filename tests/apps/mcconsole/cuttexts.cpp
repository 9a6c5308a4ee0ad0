// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mcconsole/cuttexts.h>

#include <platform/widgets/steadylabel.h>

#include <QtGui/QTextDocument>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionButton>
#include <QtWidgets/QStyleOptionComboBox>
#include <QtWidgets/QStyleOptionFrame>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolButton>

#include <algorithm>

namespace {

const QChar Ellipsis(0x2026);

class Finder {
  public:
    explicit Finder(const QWidget& window) {
        for (const auto* const widget : window.findChildren<QWidget*>())
            if (widget->isVisibleTo(&window) && widget->window() == window.window()) Look(*widget);
    }
    std::vector<std::string> Take() { return std::move(m_found); }

  private:
    void Look(const QWidget& widget) {
        m_widget = &widget;
        if (const auto* const label = qobject_cast<const QLabel*>(&widget)) return LookAtLabel(*label);
        if (const auto* const button = qobject_cast<const QAbstractButton*>(&widget))
            return LookAtButton(*button);
        if (const auto* const field = qobject_cast<const QLineEdit*>(&widget)) return LookAtField(*field);
        if (const auto* const box = qobject_cast<const QComboBox*>(&widget)) return LookAtChoices(*box);
        if (const auto* const tabs = qobject_cast<const QTabBar*>(&widget)) return LookAtTabs(*tabs);
        if (const auto* const group = qobject_cast<const QGroupBox*>(&widget))
            return Compare(group->title(), TextWidth(*group, group->title()), group->width(), "title");
        if (const auto* const header = qobject_cast<const QHeaderView*>(&widget))
            return LookAtHeader(*header);
        if (const auto* const table = qobject_cast<const QTableView*>(&widget)) return LookAtTable(*table);
        if (const auto* const menus = qobject_cast<const QMenuBar*>(&widget)) return LookAtMenus(*menus);
    }

    static int TextWidth(const QWidget& widget, const QString& text) {
        return widget.fontMetrics().size(Qt::TextShowMnemonic, text).width();
    }

    void Compare(const QString& text, int needed, int there, const char* what) {
        if (needed <= there) return;
        std::string found = m_widget->metaObject()->className();
        found += ' ' + m_widget->objectName().toStdString() + ' ' + what + " \"" + text.toStdString() +
                 "\" lacks " + std::to_string(needed - there);
        m_found.push_back(std::move(found));
    }

    void LookAtLabel(const QLabel& label) {
        if (label.text().isEmpty()) return;
        if (label.text().contains(Ellipsis)) Compare(label.text(), 1, 0, "shortened");
        const int width = label.contentsRect().width() - 2 * label.margin();
        const bool isRich = label.textFormat() == Qt::RichText ||
                            (label.textFormat() == Qt::AutoText && Qt::mightBeRichText(label.text()));
        if (label.wordWrap())
            return Compare(label.text(), label.heightForWidth(label.width()), label.height(), "height");
        const int height = label.fontMetrics().lineSpacing() * label.text().count(QLatin1Char('\n')) +
                           label.fontMetrics().tightBoundingRect(label.text()).height();
        Compare(label.text(), height, label.height(), "height");
        const QString shown = label.buddy() != nullptr ? label.text().remove(QLatin1Char('&')) : label.text();
        Compare(label.text(), isRich ? label.sizeHint().width() : label.fontMetrics().size(0, shown).width(),
                width, "label");
    }

    void LookAtButton(const QAbstractButton& button) {
        if (button.text().isEmpty()) return;
        if (button.text().contains(Ellipsis)) Compare(button.text(), 1, 0, "shortened");
        int room = button.width();
        if (qobject_cast<const QCheckBox*>(&button) != nullptr) {
            QStyleOptionButton option;
            option.initFrom(&button);
            room = button.style()->subElementRect(QStyle::SE_CheckBoxContents, &option, &button).width();
        } else if (qobject_cast<const QPushButton*>(&button) != nullptr) {
            QStyleOptionButton option;
            option.initFrom(&button);
            room = button.style()->subElementRect(QStyle::SE_PushButtonContents, &option, &button).width();
        }
        if (!button.icon().isNull()) room -= button.iconSize().width();
        Compare(button.text(), TextWidth(button, button.text()), room, "button");
        Compare(button.text(), button.fontMetrics().height(), button.height(), "height");
    }

    void LookAtField(const QLineEdit& field) {
        if (qobject_cast<const QComboBox*>(field.parentWidget()) != nullptr) return;
        QStyleOptionFrame option;
        option.initFrom(&field);
        option.lineWidth =
            field.hasFrame() ? field.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &field) : 0;
        constexpr int innerMargins = 4;  // of the toolkit's own, for the cursor
        const QMargins margins = field.textMargins();
        const int room = field.style()->subElementRect(QStyle::SE_LineEditContents, &option, &field).width() -
                         innerMargins - margins.left() - margins.right();
        const QString text = field.displayText().isEmpty() ? field.placeholderText() : field.displayText();
        Compare(text, field.fontMetrics().horizontalAdvance(text), room, "field");
        Compare(text, field.fontMetrics().height(), field.height(), "height");
    }

    void LookAtChoices(const QComboBox& box) {
        QStyleOptionComboBox option;
        option.initFrom(&box);
        option.editable = box.isEditable();
        option.subControls = QStyle::SC_All;
        const int room =
            box.style()
                ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box)
                .width();
        for (int i = 0; i < box.count(); ++i)
            Compare(box.itemText(i), box.fontMetrics().horizontalAdvance(box.itemText(i)), room, "choice");
    }

    void LookAtTabs(const QTabBar& tabs) {
        for (int i = 0; i < tabs.count(); ++i) {
            const QRect tab = tabs.tabRect(i);
            Compare(tabs.tabText(i), TextWidth(tabs, tabs.tabText(i)), tab.width() - 8, "tab");
            Compare(tabs.tabText(i), tab.right() + 1, tabs.width(), "tab in the bar");
        }
    }

    void LookAtHeader(const QHeaderView& header) {
        if (header.orientation() != Qt::Horizontal) return;
        for (int i = 0; i < header.count(); ++i) {
            if (header.isSectionHidden(i)) continue;
            const QString title = header.model()->headerData(i, Qt::Horizontal).toString();
            Compare(title, header.sectionSizeHint(i), header.sectionSize(i), "column");
        }
    }

    void LookAtTable(const QTableView& table) {
        const QAbstractItemModel& model = *table.model();
        for (int row = 0; row < model.rowCount(table.rootIndex()); ++row)
            for (int column = 0; column < model.columnCount(table.rootIndex()); ++column) {
                const QModelIndex index = model.index(row, column, table.rootIndex());
                if (table.isColumnHidden(column) ||
                    !table.visualRect(index).intersects(table.viewport()->rect()))
                    continue;
                const QString text = index.data().toString();
                const QString tip = index.data(Qt::ToolTipRole).toString();
                if (text.isEmpty() || tip.contains(text)) continue;
                const int needed = table.fontMetrics().horizontalAdvance(text) +
                                   (index.data(Qt::DecorationRole).isNull() ? 0 : table.iconSize().width());
                Compare(text, needed, table.columnWidth(column), "cell");
            }
    }

    void LookAtMenus(const QMenuBar& menus) {
        for (QAction* const action : menus.actions())
            Compare(action->text(), menus.actionGeometry(action).right() + 1, menus.width(), "menu");
    }

    const QWidget* m_widget = nullptr;
    std::vector<std::string> m_found;
};

}  // namespace

std::vector<std::string> cuttexts::Find(const QWidget& window) {
    return Finder(window).Take();
}

std::vector<std::string> cuttexts::ScrollBars(const QWidget& window, Qt::Orientation orientation) {
    std::vector<std::string> found;
    for (const auto* const bar : window.findChildren<QScrollBar*>()) {
        if (bar->orientation() != orientation || !bar->isVisibleTo(&window) ||
            bar->maximum() <= bar->minimum())
            continue;
        const QWidget* owner = bar->parentWidget();
        while (owner != nullptr && qobject_cast<const QAbstractScrollArea*>(owner) == nullptr)
            owner = owner->parentWidget();
        if (owner == nullptr) continue;
        found.push_back(std::string(owner->metaObject()->className()) + ' ' +
                        owner->objectName().toStdString() + " lacks " +
                        std::to_string(bar->maximum() - bar->minimum()));
    }
    return found;
}
