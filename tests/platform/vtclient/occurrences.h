// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/value.h>

#include <gtest/gtest.h>

#include <set>
#include <vector>

/// Numbered messages through one text of which every change counts: what was sent at one end, and what was
/// heard at the other, which is observed as long as its item stays.
class Occurrences final : public IObserver {
  public:
    ~Occurrences() override { Unhear(); }

    /// Sends the next one, \a length characters at least. \a connection numbers the connection that is up; 0:
    /// none is.
    void Send(values::Value<QString>* text, int connection, int length = 0) {
        m_connections.push_back(connection);
        text->SetValue(QString::number(m_connections.size()).rightJustified(length, QLatin1Char('0')));
    }
    void Hear(values::Value<QString>* text) {
        if (text == m_heardAt) return;
        Unhear();
        m_heardAt = text;
        if (text != nullptr) text->AddObserver(this);
    }
    void Update(Observable* /*source*/, TChangeCode code) override {
        if (code == changecode::ContentChanged) m_heard.push_back(m_heardAt->GetValue().toUInt());
        if (code == changecode::StateChanged && m_heardAt->GetState() == values::GoingAway) Unhear();
    }

    /// Whether all that was sent after the first so many, while a connection was up, has arrived.
    bool HaveArrivedAfter(std::size_t first) const {
        const std::set<std::size_t> heard(m_heard.begin(), m_heard.end());
        for (std::size_t number = first + 1; number <= m_connections.size(); ++number)
            if (m_connections[number - 1] != 0 && heard.count(number) == 0) return false;
        return true;
    }
    std::size_t CountSent() const { return m_connections.size(); }
    std::size_t CountHeard() const { return m_heard.size(); }

    /// Each arrived once at most and in order, and none that was sent through the same connection is missing
    /// before it. \a isLastShown: whoever connects is shown the last one that was sent before.
    testing::AssertionResult AreInOrder(bool isLastShown) const {
        std::size_t last = 0;
        for (const std::size_t number : m_heard) {
            if (number <= last)
                return testing::AssertionFailure() << "message " << number << " after " << last;
            const int connection = m_connections[number - 1];
            const bool mayBeShown = isLastShown && IsLastOfItsConnection(number);
            for (std::size_t missed = last + 1; missed < number && !mayBeShown; ++missed)
                if (connection != 0 && m_connections[missed - 1] == connection)
                    return testing::AssertionFailure()
                           << "message " << missed << " is missing before " << number;
            last = number;
        }
        return testing::AssertionSuccess();
    }

  private:
    void Unhear() {
        if (m_heardAt != nullptr) m_heardAt->DeleteObserver(this);
        m_heardAt = nullptr;
    }
    bool IsLastOfItsConnection(std::size_t number) const {
        return number == m_connections.size() || m_connections[number] != m_connections[number - 1];
    }

    std::vector<int> m_connections;  ///< of each message
    std::vector<std::size_t> m_heard;
    values::Value<QString>* m_heardAt = nullptr;
};
