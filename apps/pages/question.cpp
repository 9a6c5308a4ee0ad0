// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/question.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtCore/QVariant>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include <chrono>
#include <utility>

namespace {

constexpr char PlaceProperty[] = "questionPlace";

/// That of \a widget, or of the nearest that it is in.
QString PlaceOf(const QWidget* widget) {
    for (; widget != nullptr; widget = widget->parentWidget()) {
        const QString place = widget->property(PlaceProperty).toString();
        if (!place.isEmpty()) return place;
    }
    return QString();
}

constexpr std::chrono::milliseconds FollowPeriod(200);
constexpr std::chrono::milliseconds ReadingTime(1000);

/// Its text stays true while it is open. Who was about to confirm when it changed has to look again.
class QuestionBox : public QMessageBox {
  public:
    QuestionBox(QWidget* parent, const QString& title, const QString& action, question::Loss loss)
        : QMessageBox(Question, title, QString(), NoButton, parent),
          m_loss(std::move(loss)),
          m_place(PlaceOf(parent)),
          m_act(addButton(action, AcceptRole)) {
        setObjectName(QStringLiteral("Question"));
        setTextFormat(Qt::PlainText);
        QPushButton* const cancel = addButton(QCoreApplication::translate("Question", "Cancel"), RejectRole);
        setDefaultButton(cancel);
        setEscapeButton(cancel);
        m_reading.setSingleShot(true);
        connect(&m_reading, &QTimer::timeout, this, [this] { m_act->setEnabled(true); });
        connect(&m_follow, &QTimer::timeout, this, [this] { Follow(); });
        Follow();
        m_act->setEnabled(true);
        m_follow.start(FollowPeriod);
    }

    bool IsConfirmed() const { return clickedButton() == m_act; }

  private:
    void Follow() {
        const std::optional<QString> loss = m_loss();
        if (!loss) return reject();
        if (loss == m_shown) return;
        m_shown = loss;
        setText(question::At(
            m_place, loss->isEmpty()
                         ? QCoreApplication::translate("Question", "Nobody loses anything by it any more.")
                         : *loss));
        m_act->setEnabled(false);
        m_reading.start(ReadingTime);
    }

    question::Loss m_loss;
    QString m_place;
    QPushButton* m_act;
    std::optional<QString> m_shown;
    QTimer m_follow;
    QTimer m_reading;
};

}  // namespace

void question::SetPlace(QWidget& widget, const QString& place) {
    widget.setProperty(PlaceProperty, place);
}

QString question::At(const QString& place, const QString& text) {
    if (place.isEmpty()) return text;
    return QCoreApplication::translate("Question", "At %1:").arg(place) + QLatin1Char('\n') + text;
}

bool question::IsConfirmed(QWidget* parent, const QString& title, const QString& action, const Loss& loss) {
    const std::optional<QString> text = loss();
    if (!text || text->isEmpty()) return text.has_value();
    // Not on the stack: it goes with its parent, which may be destroyed while it is open.
    const QPointer<QuestionBox> box(new QuestionBox(parent, title, action, loss));
    box->exec();
    if (box == nullptr) return false;
    const bool isConfirmed = box->IsConfirmed();
    delete box.data();
    return isConfirmed;
}

void question::Withdraw(const QWidget& widget) {
    for (auto* const box : widget.findChildren<QMessageBox*>(QStringLiteral("Question")))
        box->reject();
}
