// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/cborhead.h>
#include <platform/vtclient/wire/cboroutput.h>
#include <platform/vtclient/wire/messages.h>

#include <array>
#include <cstddef>
#include <string_view>
#include <tuple>

namespace vt {

namespace wire {

/// Writes what stands before changes where there is room for it: each client gets one of its own, and in a
/// batch nothing else is written for it.
class HeadOutput {
  public:
    explicit HeadOutput(char* at) : m_end(at) {}
    void OpenArray() { Byte(CborHead::Array, CborHead::Open); }
    void Unsigned(quint64 number) { m_end = CborHead::Write(m_end, CborHead::Unsigned, number); }
    void Boolean(bool flag) { Byte(CborHead::Simple, flag ? CborHead::True : CborHead::False); }
    const char* End() const { return m_end; }

  private:
    void Byte(CborHead::EType type, unsigned info) {
        *m_end++ = static_cast<char>(CborHead::FirstByte(type, info));
    }

    char* m_end;
};

/// What messages are written to, emptied. Keeps its room from one message to the next.
CborOutput& EmptyOutput();

template <class M, class Output>
void WriteHead(Output& output, const M& message) {
    output.OpenArray();
    output.Unsigned(static_cast<quint64>(M::Type));
    WriteFields(output, message);
}

}  // namespace wire

/// \a message on the wire, without the frame. Valid until the next call, for whichever message. Main thread.
template <class M>
std::string_view Encode(const M& message) {
    static_assert(!CarriesChanges(M::Type), "changes follow: EncodeHead");
    CborOutput& output = wire::EmptyOutput();
    wire::WriteHead(output, message);
    output.CloseArray();
    return {output.Data(), static_cast<std::size_t>(output.Size())};
}

/// What stands before the changes of \a message, likewise.
template <class M>
std::string_view EncodeHead(const M& message) {
    static_assert(CarriesChanges(M::Type), "no changes follow: Encode");
    constexpr std::size_t Elements =
        2 + std::tuple_size_v<decltype(M::Fields())>;  // with the array, and the type
    static std::array<char, Elements * CborHead::Longest> bytes;
    wire::HeadOutput output(bytes.data());
    wire::WriteHead(output, message);
    return {bytes.data(), static_cast<std::size_t>(output.End() - bytes.data())};
}
/// And what stands behind them.
constexpr std::string_view ChangesEnd = "\xff";

}  // namespace vt
