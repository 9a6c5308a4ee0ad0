// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/observable.h>
#include <platform/values/value.h>
#include <platform/values/valuenumeric.h>

#include <QtCore/QString>

class CodedText;
class IClock;

/// What the "Status" of an MpxORV tells beyond what the library knows: numbers and moments where its own
/// values have sentences. Moments are as IClock::UtcText() has them. Main thread; needs the tree.
class MpxOrvFacts : private IObserver {
  public:
    explicit MpxOrvFacts(const QString& statusPath);
    ~MpxOrvFacts() override;
    MpxOrvFacts(const MpxOrvFacts&) = delete;
    MpxOrvFacts& operator=(const MpxOrvFacts&) = delete;

    /// It is tuned to \a hz, 0 for nothing. Told again of the same frequency it stays as it is.
    void ShowTuned(double hz, const IClock& clock);
    /// Its "Blanking" was switched just now; \a by is empty where nobody from outside did that.
    void ShowBlankingSwitched(const QString& by, const IClock& clock);
    /// It was switched before this server began.
    void RestoreBlankingSwitched(const QString& by, const QString& since);
    QString GetBlankingSwitchedBy() const;
    QString GetBlankingSwitchedSince() const;
    /// What it does, as a code beside the text.
    void ShowOperationType(const CodedText& does);
    /// Its clients may not switch its policies, for that reason; none: they may.
    void ShowPoliciesLocked(const CodedText& reason);

  private:
    struct Fields;

    void Update(Observable* source, TChangeCode code) override;

    QString m_statusPath;
    values::ValueNumeric<double>* m_pTunedFrequency = nullptr;
    values::Value<QString>* m_pTunedSince = nullptr;
    values::Value<QString>* m_pBlankingSwitchedBy = nullptr;
    values::Value<QString>* m_pBlankingSwitchedSince = nullptr;
    values::Value<QString>* m_pPoliciesLocked = nullptr;
    values::Value<QString>* m_pOperationTypeCode = nullptr;
};
