// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mcconsole/visibletexts.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtGui/QHelpEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QAction>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTextEdit>
#include <QtWidgets/QToolTip>

#include <qwt_plot.h>
#include <qwt_plot_marker.h>
#include <qwt_text.h>

#include <vector>

namespace {

using visibletexts::Visit;

QString PlaceOf(const QWidget& widget) {
    QString page;
    QString place = QLatin1String(widget.metaObject()->className());
    for (const QWidget* above = &widget; above != nullptr; above = above->parentWidget())
        if (!above->objectName().isEmpty()) page.prepend(above->objectName() + QLatin1Char('/'));
    return page + place;
}

/// The log shows what the server says as it comes.
bool IsLog(const QWidget& widget) {
    if (widget.objectName() != QLatin1String("LogTextEdit")) return false;
    for (const QWidget* above = &widget; above != nullptr; above = above->parentWidget())
        if (above->objectName() == QLatin1String("Log")) return true;
    return false;
}

void VisitCells(const QAbstractItemModel& model, const QModelIndex& parent, const Visit& visit,
                const QString& where) {
    constexpr int Most = 300;  // rows
    for (int row = 0; row < model.rowCount(parent) && row < Most; ++row)
        for (int column = 0; column < model.columnCount(parent); ++column) {
            const QModelIndex cell = model.index(row, column, parent);
            const QString place = QStringLiteral("%1[%2,%3]").arg(where).arg(row).arg(column);
            for (const int role : {int(Qt::DisplayRole), int(Qt::ToolTipRole), int(Qt::AccessibleTextRole),
                                   int(Qt::WhatsThisRole)})
                visit(place, cell.data(role).toString());
            if (column == 0 && model.hasChildren(cell)) VisitCells(model, cell, visit, place);
        }
}

void VisitModel(const QAbstractItemView& view, const Visit& visit) {
    const QAbstractItemModel* const model = view.model();
    if (model == nullptr) return;
    const QString where = PlaceOf(view);
    for (int column = 0; column < model->columnCount(); ++column)
        for (const int role : {int(Qt::DisplayRole), int(Qt::ToolTipRole)})
            visit(where + QStringLiteral(" title"),
                  model->headerData(column, Qt::Horizontal, role).toString());
    VisitCells(*model, QModelIndex(), visit, where);
}

void VisitPlot(const QwtPlot& plot, const Visit& visit) {
    const QString where = PlaceOf(plot);
    visit(where, plot.title().text());
    for (int axis = 0; axis < QwtPlot::axisCnt; ++axis)
        visit(where, plot.axisTitle(axis).text());
    for (const QwtPlotItem* const item : plot.itemList()) {
        visit(where, item->title().text());
        if (const auto* const marker = dynamic_cast<const QwtPlotMarker*>(item))
            visit(where, marker->label().text());
    }
}

/// What is shown to a pointer that rests on \a widget, and made only then.
void VisitTip(QWidget& widget, const Visit& visit) {
    if (!widget.isVisible()) return;
    // One that was there is hidden some time later only.
    const QString before = QToolTip::isVisible() ? QToolTip::text() : QString();
    const QPoint middle = widget.rect().center();
    QHelpEvent event(QEvent::ToolTip, middle, widget.mapToGlobal(middle));
    QCoreApplication::sendEvent(&widget, &event);
    if (QToolTip::isVisible() && QToolTip::text() != before)
        visit(PlaceOf(widget) + QStringLiteral(" tip"), QToolTip::text());
}

void VisitActions(const QWidget& widget, const Visit& visit) {
    for (const QAction* const action : widget.findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly)) {
        visit(PlaceOf(widget) + QStringLiteral(" action"), action->text());
        visit(PlaceOf(widget) + QStringLiteral(" action"), action->toolTip());
    }
}

void VisitCommon(QWidget& widget, const Visit& visit) {
    const QString where = PlaceOf(widget);
    if (widget.isWindow()) visit(where, widget.windowTitle());
    for (const QString& text : {widget.toolTip(), widget.statusTip(), widget.whatsThis(),
                                widget.accessibleName(), widget.accessibleDescription()})
        visit(where, text);
    VisitActions(widget, visit);
    VisitTip(widget, visit);
}

void VisitWidget(QWidget& widget, const Visit& visit) {
    const QString where = PlaceOf(widget);
    if (widget.inherits("QTipLabel") || IsLog(widget)) return;
    VisitCommon(widget, visit);
    if (const auto* const label = qobject_cast<QLabel*>(&widget)) visit(where, label->text());
    if (const auto* const button = qobject_cast<QAbstractButton*>(&widget)) visit(where, button->text());
    if (const auto* const box = qobject_cast<QGroupBox*>(&widget)) visit(where, box->title());
    if (const auto* const menu = qobject_cast<QMenu*>(&widget)) visit(where, menu->title());
    if (const auto* const bar = qobject_cast<QStatusBar*>(&widget)) visit(where, bar->currentMessage());
    if (const auto* const field = qobject_cast<QLineEdit*>(&widget)) {
        visit(where, field->placeholderText());
        visit(where, field->text());
    }
    if (const auto* const spin = qobject_cast<QAbstractSpinBox*>(&widget)) visit(where, spin->text());
    if (const auto* const text = qobject_cast<QTextEdit*>(&widget))
        for (const QString& line : text->toPlainText().split(QLatin1Char('\n')))
            visit(where, line);
    if (const auto* const text = qobject_cast<QPlainTextEdit*>(&widget)) visit(where, text->toPlainText());
    if (const auto* const box = qobject_cast<QComboBox*>(&widget))
        for (int i = 0; i < box->count(); ++i)
            visit(where, box->itemText(i));
    if (const auto* const tabs = qobject_cast<QTabWidget*>(&widget))
        for (int i = 0; i < tabs->count(); ++i) {
            visit(where, tabs->tabText(i));
            visit(where, tabs->tabToolTip(i));
        }
    // The titles are those of the table.
    const auto* const view = qobject_cast<QAbstractItemView*>(&widget);
    if (view != nullptr && !widget.inherits("QHeaderView")) VisitModel(*view, visit);
    if (const auto* const plot = qobject_cast<QwtPlot*>(&widget)) VisitPlot(*plot, visit);
}

}  // namespace

void visibletexts::ForEach(QWidget& window, const Visit& visit) {
    const auto seen = [&visit](const QString& where, const QString& text) {
        if (!text.trimmed().isEmpty()) visit(where, text);
    };
    VisitWidget(window, seen);
    // Tips come and go with their windows while one is asked for the next.
    std::vector<QPointer<QWidget>> widgets;
    for (QWidget* const widget : window.findChildren<QWidget*>())
        widgets.emplace_back(widget);
    for (const QPointer<QWidget>& widget : widgets)
        if (widget != nullptr) VisitWidget(*widget, seen);
    QToolTip::hideText();
}

void visibletexts::ForEachPage(QWidget& window, QTabWidget& pages, const Visit& visit) {
    const int inFront = pages.currentIndex();
    for (int page = 0; page < pages.count(); ++page) {
        pages.setCurrentIndex(page);
        for (auto* const parts : pages.widget(page)->findChildren<QTabWidget*>())
            for (int part = 0; part < parts->count(); ++part) {
                parts->setCurrentIndex(part);
                QCoreApplication::processEvents();
                ForEach(*parts->widget(part), visit);
            }
        QCoreApplication::processEvents();
        ForEach(*pages.widget(page), visit);
    }
    pages.setCurrentIndex(inFront);
    ForEach(window, visit);
}
