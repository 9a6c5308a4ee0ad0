// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QFrame>

class HeldBefore;
class QLabel;

/// Offers to ask again for what the console's MpxORV had before a loss. Hidden while there is nothing to
/// offer. GUI thread.
class RestoreOffer : public QFrame {
    Q_OBJECT

  public:
    /// \a held is not owned and outlives the offer.
    explicit RestoreOffer(HeldBefore& held, QWidget* parent = nullptr);

    /// Hides the offer where the same stands already.
    void ShowHere(bool isHere);

  private:
    void Show();
    QString Text() const;

    HeldBefore& m_held;
    QLabel* m_text;
    bool m_isHere = true;
};
