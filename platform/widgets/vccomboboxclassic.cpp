// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vccomboboxclassic.h>

#include <platform/values/visit.h>
#include <platform/widgets/valuetext.h>

#include <QtCore/QPointer>
#include <QtCore/QSignalBlocker>
#include <QtGui/QKeyEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionComboBox>

namespace {

constexpr int MaxItemLength = 500;  // characters: more would not fit any screen
constexpr int MaxHintWidth = 400;   // pixels: a long text must not hold a window open
constexpr int MinContents = 8;      // characters of room while there is nothing to show

QString TextOf(const values::SelectionItem& item) {
    return valuetext::Shortened(valuetext::Item(item.GetName()), MaxItemLength);
}

/// Whether a key would open the list or choose from it.
bool IsChoosing(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Home:
        case Qt::Key_End:
        case Qt::Key_F4:
            return true;
        default:
            return !event.text().isEmpty() && event.text().at(0).isPrint();
    }
}

}  // namespace

VCComboBoxClassic::VCComboBoxClassic(QWidget* parent, const char* name)
    : QComboBox(parent),
      m_binding(*this, *this, values::Is<values::ValueSelection>, WidgetBinding::Editable) {
    if (name != nullptr) setObjectName(QString::fromUtf8(name));
    setSizeAdjustPolicy(AdjustToContents);
    setMinimumContentsLength(MinContents);
    setFocusPolicy(Qt::StrongFocus);  // the wheel alone must not get at it
    connect(this, QOverload<int>::of(&QComboBox::activated), this, &VCComboBoxClassic::OnActivated);
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
        m_binding.RefuseEdit();
}

QSize VCComboBoxClassic::sizeHint() const {
    return QComboBox::sizeHint().boundedTo(QSize(MaxHintWidth, QWIDGETSIZE_MAX));
}

QSize VCComboBoxClassic::minimumSizeHint() const {
    return QComboBox::minimumSizeHint().boundedTo(QSize(MaxHintWidth, QWIDGETSIZE_MAX));
}

bool VCComboBoxClassic::event(QEvent* event) {
    const QPointer<VCComboBoxClassic> self(this);
    const bool isHandled = QComboBox::event(event);
    if (self != nullptr) m_binding.CommitIfDue();
    return isHandled;
}

void VCComboBoxClassic::keyPressEvent(QKeyEvent* event) {
    if (m_binding.MayEdit())
        QComboBox::keyPressEvent(event);
    else if (IsChoosing(*event))
        m_binding.RefuseEdit();
    else
        event->ignore();
}

/// A user who scrolls a form by the wheel does not mean the box that comes below the pointer.
void VCComboBoxClassic::wheelEvent(QWheelEvent* event) {
    if (hasFocus() && m_binding.MayEdit())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

void VCComboBoxClassic::OnActivated(int index) {
    m_chosen = index;
    m_binding.CommitSoon();
}

/// The user chose a text. The item is taken only if it still has that text: items may have moved meanwhile.
void VCComboBoxClassic::Commit(values::ValueBase& value) {
    auto& selection = static_cast<values::ValueSelection&>(value);
    const values::SelectionItem* const item = selection.GetItemAt(m_chosen);
    if (item != nullptr && ShowsItem(m_chosen, *item))
        selection.SelectIndex(m_chosen);
    else
        m_binding.Refuse(tr("There is no such choice any more."));
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
        if (!ShowsItem(i, *selection.GetItemAt(i))) return false;
    }
    return true;
}

bool VCComboBoxClassic::ShowsItem(int index, const values::SelectionItem& item) const {
    return itemData(index).toLongLong() == item.GetKey() && itemText(index) == TextOf(item);
}

void VCComboBoxClassic::ShowItems(const values::ValueSelection& selection) {
    hidePopup();
    clear();
    for (int i = 0; i < selection.Count(); ++i) {
        const values::SelectionItem& item = *selection.GetItemAt(i);
        addItem(TextOf(item), qlonglong{item.GetKey()});
    }
}

void VCComboBoxClassic::ShowAccess(bool mayEdit) {
    if (!mayEdit) hidePopup();
}

QString VCComboBoxClassic::HiddenText() const {
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect room =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    return fontMetrics().horizontalAdvance(currentText()) > room.width() ? currentText() : QString();
}
