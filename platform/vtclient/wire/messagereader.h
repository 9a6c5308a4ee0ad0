// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/cborinput.h>
#include <platform/vtclient/wire/messages.h>
#include <platform/vtclient/wire/treechange.h>

#include <QtCore/QString>

#include <type_traits>
#include <utility>
#include <variant>

namespace vt {

namespace wire {

/// Reads a whole message but for its end. Of a hello of another version nothing behind the version is looked
/// at, whatever it is: its sender is to hear which one is spoken here. \a isWhole: all of it was looked at.
template <class Input, class M>
bool ReadBody(Input& input, M* message, bool* isWhole) {
    if constexpr (M::Type == EMessage::Hello) {
        if (!std::get<0>(FieldsOf<M>).Read(input, message)) return false;
        *isWhole = message->IsSpokenHere();
        return !*isWhole || ReadFields<1>(input, message);
    } else {
        return ReadFields(input, message);
    }
}

template <class M, class Input, class Receiver>
bool ReadMessageAs(Input& input, Receiver& receiver) {
    M message;
    bool isWhole = !CarriesChanges(M::Type);
    if (!ReadBody(input, &message, &isWhole)) return false;
    if (isWhole && (!input.Leave() || !input.Finish())) return false;
    receiver(std::as_const(message));
    return true;
}

template <class Input, class Receiver, class... M>
bool ReadMessageOf(quint64 number, Input& input, Receiver& receiver, const std::variant<M...>* /*any*/) {
    static constexpr bool (*Reads[])(Input&, Receiver&) = {&ReadMessageAs<M, Input, Receiver>...};
    return Reads[number - 1](input, receiver);
}

/// Reads a message from \a input, without its changes, and gives it to that overload of \a receiver which
/// takes it. False, and the receiver is told nothing, if there is none; \a input knows why.
template <class Input, class Receiver>
bool ReadMessage(Input& input, Receiver& receiver) {
    quint64 number = 0;
    if (!input.Enter() || !input.Unsigned(std::variant_size_v<Message>, &number)) return false;
    if (number == 0) return input.Fail("there is no such message");
    return ReadMessageOf(number, input, receiver, static_cast<const Message*>(nullptr));
}

}  // namespace wire

/// Reads one message: what it says, and then, in those that have them, change by change.
class MessageReader {
  public:
    /// \a data stays valid while this is used.
    MessageReader(const char* data, qint64 size) : m_input(data, size) {}

    /// Gives the message to that overload of \a receiver which takes it, during this call: no Message is made
    /// on the way, which would have to have room for all of them. False, and the receiver is told nothing,
    /// for a message that is none; Error() says why. One without changes has then been read whole.
    template <class Receiver>
    bool Read(Receiver&& receiver) {
        const auto receive = [this, &receiver](const auto& message) {
            m_isRead = !CarriesChanges(std::decay_t<decltype(message)>::Type);
            receiver(message);
        };
        return wire::ReadMessage(m_input, receive);
    }
    /// The next change; false at the end, or if something is wrong (then Error() is not empty). From the
    /// receiver, or afterwards.
    bool NextChange(TreeChange* change) {
        // What comes millions of times is read in the caller's loop.
        if (!m_input.NumberChange(&change->id, &change->item.content)) return NextOtherChange(change);
        change->change = EChange::Changed;
        return true;
    }
    QString Error() const { return m_input.Error(); }

  private:
    bool NextOtherChange(TreeChange* change);
    bool ReadWrapped(TreeChange* change);
    bool ReadLimits(TreeChange* change);

    CborInput m_input;
    bool m_isRead = false;  ///< to the end
};

}  // namespace vt
