// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/codedtext.h>

#include <QtCore/QString>

#include <optional>

/// What a server answered to a request: how that ended, and what it says about it.
class ServerAnswer {
  public:
    enum class EKind {
        Done,
        DoneUnsupervised,  ///< a frequency that nobody watches over
        Refused,
        Ended,   ///< what was granted earlier is taken away
        Unknown  ///< a server that is newer than this says more
    };

    /// \a text is the answer, \a code the one beside it: of a server that tells none empty, and of no use if
    /// it belongs to another answer.
    ServerAnswer(const QString& text, const QString& code);

    EKind GetKind() const { return m_kind; }
    /// What it says beside its kind; none if the server tells it as text only.
    const std::optional<CodedText>& GetSaid() const { return m_said; }
    /// The whole, in the language of the window where the server tells it as a code too.
    QString GetText() const;
    /// The same without its kind.
    QString GetReason() const;

  private:
    QString m_text;
    EKind m_kind = EKind::Unknown;
    std::optional<CodedText> m_whole;
    std::optional<CodedText> m_said;
};
