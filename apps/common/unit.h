// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// The unit in which values of a well-known name are counted. The server does not tell units.
class Unit {
  public:
    /// The unit of values named \a name; one that is empty for a name that is not well known.
    static Unit Of(const QString& name);
    /// That of frequencies.
    static Unit Hertz();

    bool IsEmpty() const { return m_row == nullptr; }
    /// Whether it is that of frequencies.
    bool IsHertz() const;
    /// The unit itself, e.g. "Hz".
    QString Name() const;

    /// The decimal number \a decimal (digits, maybe a point and a sign) in the greatest multiple of the unit
    /// in which it is not below 1, and which one, e.g. "123.45" and "MHz" for "123450000". Loses no digit.
    QString Scaled(const QString& decimal, QString* name) const;

    /// Takes this unit, a multiple of it ("GHz", in any case) or, of frequencies, the prefix of one ("30M")
    /// off the end of \a text. The decimal number that is left counts the unit itself: "123.45 MHz" becomes
    /// "123.45e6". A text without such an end stays as it is.
    QString WithoutUnit(const QString& text) const;
    /// What WithoutUnit() takes, for people; empty where there is no unit.
    QString Accepted() const;

    struct Row;

  private:
    explicit Unit(const Row* row) : m_row(row) {}

    const Row* m_row;
};
