// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vccomboboxclassic.h>

#include <platform/values/valueselection.h>

#include <QtCore/QSignalBlocker>
#include <QtGui/QKeyEvent>
#include <QtGui/QWheelEvent>

namespace {

bool IsSelection(const values::ValueBase& value) {
    return dynamic_cast<const values::ValueSelection*>(&value) != nullptr;
}

/// Keys that only move on to another widget, or that others wait for.
bool ChangesNothing(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
        case Qt::Key_Escape:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return true;
        default:
            return false;
    }
}

}  // namespace

VCComboBoxClassic::VCComboBoxClassic(QWidget* parent, const char* name)
    : QComboBox(parent), m_binding(*this, *this, IsSelection, WidgetBinding::Editable) {
    if (name != nullptr) setObjectName(QString::fromUtf8(name));
    setSizeAdjustPolicy(AdjustToContents);
    setFocusPolicy(Qt::StrongFocus);  // the wheel alone must not get at it
    connect(this, QOverload<int>::of(&QComboBox::activated), this, &VCComboBoxClassic::Choose);
    m_binding.RefreshNow();
}

VCComboBoxClassic::~VCComboBoxClassic() = default;

void VCComboBoxClassic::SetValueSelection_ValuePath(const QString& path) {
    m_binding.SetPath(path);
}

void VCComboBoxClassic::showPopup() {
    if (m_binding.MayEdit())
        QComboBox::showPopup();
    else
        m_binding.Refuse(tr("This cannot be changed now."));
}

void VCComboBoxClassic::keyPressEvent(QKeyEvent* event) {
    if (m_binding.MayEdit() || ChangesNothing(*event))
        QComboBox::keyPressEvent(event);
    else
        m_binding.Refuse(tr("This cannot be changed now."));
}

/// Turned over a form that scrolls, the wheel is not meant for the box below the pointer.
void VCComboBoxClassic::wheelEvent(QWheelEvent* event) {
    if (hasFocus() && m_binding.MayEdit())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

/// The user saw a text: it is chosen only if it still stands at its place.
void VCComboBoxClassic::Choose(int index) {
    if (m_binding.MayEdit()) {
        auto* const selection = m_binding.GetValueAs<values::ValueSelection>();
        const values::SelectionItem* const item = selection->GetItemAt(index);
        if (item != nullptr && item->GetName() == itemText(index)) {
            m_binding.ForgetRefusal();
            selection->SelectIndex(index);
        } else {
            m_binding.Refuse(tr("There is no such choice any more."));
        }
    } else {
        m_binding.Refuse(tr("This cannot be changed now."));
    }
    m_binding.RefreshNow();
}

void VCComboBoxClassic::ShowValue(const values::ValueBase* value) {
    const QSignalBlocker blocker(this);
    const auto* const selection = static_cast<const values::ValueSelection*>(value);
    if (selection == nullptr) {
        hidePopup();
        return clear();
    }
    if (!ShowsItemsOf(*selection)) ShowItems(*selection);
    if (currentIndex() != selection->GetCurrentIndex()) setCurrentIndex(selection->GetCurrentIndex());
}

bool VCComboBoxClassic::ShowsItemsOf(const values::ValueSelection& selection) const {
    if (count() != selection.Count()) return false;
    for (int i = 0; i < count(); ++i) {
        if (itemText(i) != selection.GetItemAt(i)->GetName()) return false;
    }
    return true;
}

void VCComboBoxClassic::ShowItems(const values::ValueSelection& selection) {
    hidePopup();
    clear();
    for (int i = 0; i < selection.Count(); ++i)
        addItem(selection.GetItemAt(i)->GetName());
}

void VCComboBoxClassic::ShowAccess(bool mayEdit) {
    if (!mayEdit) hidePopup();
}
