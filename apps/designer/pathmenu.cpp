// SPDX-License-Identifier: Apache-2.0
#include <apps/designer/pathmenu.h>

#include <apps/designer/boundwidget.h>
#include <apps/designer/content.h>
#include <apps/designer/paths/pathdialog.h>

#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtWidgets/QAction>

PathMenu::PathMenu(QWidget& widget, const BoundWidget& kind, QObject* parent)
    : QObject(parent),
      m_widget(&widget),
      m_kind(kind),
      m_choose(new QAction(kind.HasList() ? tr("Add a path...") : tr("Choose the path..."), this)) {
    m_choose->setObjectName(QStringLiteral("ChoosePath"));
    connect(m_choose, &QAction::triggered, this, &PathMenu::Choose);
}

void PathMenu::Choose() {
    const QPointer<PathMenu> self(this);
    const QByteArray before = m_widget->property(m_kind.property).toByteArray();
    const QString path = m_kind.HasList() ? QString() : QString::fromUtf8(before);
    PathDialog dialog(m_kind, path, m_widget->window());
    const bool isChosen = dialog.exec() == QDialog::Accepted;
    // The form may have been closed meanwhile.
    if (isChosen && !self.isNull() && !m_widget.isNull()) Take(dialog.GetPath(), dialog.GetContent());
}

/// By the form's cursor, so that it can be undone.
void PathMenu::Take(const QString& path, unsigned content) {
    QDesignerFormWindowInterface* const form = QDesignerFormWindowInterface::findFormWindow(m_widget);
    if (form == nullptr) return;
    const QString property = QString::fromLatin1(m_kind.property);
    const QByteArray before = m_widget->property(m_kind.property).toByteArray();
    const QByteArray chosen = path.toUtf8();
    if (m_kind.HasList() && (chosen.isEmpty() || before.split(',').contains(chosen))) return;
    const bool isAdded = m_kind.HasList() && !before.isEmpty();
    form->cursor()->setWidgetProperty(m_widget, property, isAdded ? before + ',' + chosen : chosen);
    const QString integer = QStringLiteral("integer");
    const bool isNumber = content == content::Integer || content == content::Number;
    if (isNumber && m_widget->metaObject()->indexOfProperty("integer") >= 0)
        form->cursor()->setWidgetProperty(m_widget, integer, content == content::Integer);
}
