// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/session/situationitem.h>

#include <QtWidgets/QToolButton>

#include <optional>

/// One thing of the situation: a caption, and below it how that is, as much of it as there is room for. GUI
/// thread.
class StatusButton : public QToolButton {
    Q_OBJECT

  public:
    StatusButton(const QString& name, const QString& caption, QWidget* parent);

    void Show(const SituationItem& item);
    const SituationItem& GetItem() const { return m_item; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void ShowLook();
    QString CaptionWithAge() const;
    void ShowText();
    int TextWidth() const;
    QSize SizeFor(int textWidth) const;

    QString m_caption;
    SituationItem m_item;
    std::optional<ESeverity> m_iconSeverity;  ///< of the icon that is shown; none before the first
};
