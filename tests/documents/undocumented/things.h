// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Things of which some have no words.
class Things {
  public:
    Things() = default;
    Things(const Things&) = default;
    int Count() const;

    /// In Hz.
    double GetSize() const;
    void SetSize(double size);
    void SetOther(double other);
    int GetRow() const;  ///< of the table
    void SetRow(int row);
};

class Nothing {};
