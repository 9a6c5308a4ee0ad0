// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/connectionexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

/// What a server keeps of a token: enough to know it again, not enough to present it. Written as
/// "hmac-sha256$<salt>$<digest>", or "pbkdf2-sha256$<iterations>$<salt>$<digest>" where somebody made it for
/// a token that a person chose; salt and digest in hexadecimal. Any thread.
///
/// Tokens made here are random, so nobody finds one by trying however cheap a trial is, and a trial takes
/// microseconds. The iterations of the other form slow down guessing, and keep the event loop, on which all
/// clients wait, busy for milliseconds: whoever checks it bounds how often.
class MCS_CONNECTION_EXPORT VtTokenHash {
  public:
    static constexpr int MinIterations = 1000;
    static constexpr int MaxIterations = 200000;

    /// A fresh token of 256 random bits, in 43 letters, digits, "-" and "_".
    static QString CreateToken();
    /// The hash of \a token under a fresh salt.
    static VtTokenHash Of(const QString& token);
    /// Null for a text that is not of the form above, or whose numbers are out of bounds.
    static std::optional<VtTokenHash> Parse(const QString& text);

    /// Whether a check of it takes milliseconds.
    bool IsSlow() const { return m_iterations > 0; }
    QString ToText() const;  ///< The form that Parse() reads.
    /// Takes the same time for every token.
    bool Matches(const QString& token) const;

  private:
    VtTokenHash(int iterations, QByteArray salt, QByteArray digest);

    int m_iterations;  ///< 0 for the form without
    QByteArray m_salt;
    QByteArray m_digest;
};
