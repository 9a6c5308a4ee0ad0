// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/tune/tuning.h>

#include <QtCore/QString>
#include <QtWidgets/QWidget>

class FrequencyBook;
class FrequencyField;
class FrequencyPicker;
class QComboBox;
class QFrame;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QToolButton;

/// Tunes an MpxORV: the frequency that the operator wants, what was understood of it, what became of it, and
/// beside it the one that there is. Only Enter and "Tune" ask for a frequency, and steps once they rest; what
/// is not asked for is marked. GUI thread.
class TuneBar : public QWidget {
    Q_OBJECT

  public:
    /// Neither is owned, both outlive the bar; several bars may show the same.
    TuneBar(Tuning& tuning, FrequencyBook& book, QWidget* parent = nullptr);

    /// To the field, with all of it selected.
    void TakeFocus();
    /// Says where it tunes, where there are several stations; empty: there is one.
    void SetPlace(const QString& place);
    FrequencyPicker& GetPicker() const { return *m_picker; }

    QSize minimumSizeHint() const override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QWidget* BuildField();
    QWidget* BuildSteps();
    void BuildActual();
    void LayOut(bool isNarrow);
    void FitWidth();
    int RoomSaved() const;
    void Tune();
    void TakeBack();
    void Step(int count);

    void Show();
    void ShowText();
    void ShowActual();
    void ShowMark(Tuning::EState state);
    void ShowMessage(const QString& text);

    Tuning& m_tuning;
    QFrame* m_frame = nullptr;  ///< around the field, red while that cannot be asked for
    FrequencyField* m_field = nullptr;
    QLabel* m_caption;
    FrequencyPicker* m_picker;
    QLabel* m_understood = nullptr;
    QLabel* m_stepCaption = nullptr;
    QComboBox* m_step = nullptr;
    QToolButton* m_down = nullptr;
    QToolButton* m_up = nullptr;
    QPushButton* m_tune = nullptr;
    QLabel* m_actual = nullptr;
    QLabel* m_icon = nullptr;
    QLabel* m_mark = nullptr;
    QLabel* m_message = nullptr;
    QHBoxLayout* m_entryRow;   ///< what is wanted
    QHBoxLayout* m_actualRow;  ///< what there is
    bool m_isNarrow = false;   ///< what is chosen from stands in the second row
};
