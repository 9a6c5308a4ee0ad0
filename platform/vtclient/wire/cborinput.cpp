// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/wire/cborinput.h>

#include <platform/vtclient/wire/itemkinds.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <QtCore/QCborStreamReader>
#include <QtCore/QFloat16>

#include <algorithm>

namespace vt {

namespace {

constexpr const char* NotCbor = "not well-formed CBOR";
constexpr const char* BadText = "a text is not well-formed";
constexpr const char* LongText = "a text is too long";
constexpr quint64 MaxElements = 0xfffffffe;  // as Qt's reader has it

bool IsAscii(const quint8* text, std::size_t size) {
    constexpr quint64 HighBits = 0x8080808080808080;
    quint64 all = 0;
    std::size_t i = 0;
    for (; i + sizeof all <= size; i += sizeof all) {
        quint64 eight = 0;
        std::memcpy(&eight, text + i, sizeof eight);
        all |= eight;
    }
    for (; i < size; ++i)
        all |= text[i];
    return (all & HighBits) == 0;
}

}  // namespace

CborInput::CborInput(const char* data, qint64 size)
    : m_at(reinterpret_cast<const quint8*>(data)), m_end(m_at + size) {
    m_isBroken = !m_head.Read(m_at, m_end);
}

bool CborInput::Fail(const char* what) {
    if (m_error == nullptr) m_error = what;
    m_head = CborHead();
    return false;
}

bool CborInput::Next() {
    return GoTo(m_at + m_head.size) || Fail(NotCbor);
}

bool CborInput::Enter() {
    if (HasFailed()) return false;
    if (!IsArray()) return Fail("an array was expected");
    const bool isOpen = m_head.info == CborHead::Open;
    if (!isOpen && m_head.argument > MaxElements) return Fail(NotCbor);
    ++m_depth;
    Q_ASSERT_X(m_depth < MaxDepth, Q_FUNC_INFO, "messages are not that deep");
    m_left[static_cast<std::size_t>(m_depth)] = isOpen ? Unknown : m_head.argument + 1;
    return Next();
}

bool CborInput::Leave() {
    if (HasFailed()) return false;
    if (m_isBroken) return Fail(NotCbor);
    if (!m_isAtEnd) return Fail("more elements than expected");
    const bool isOpen = m_left[static_cast<std::size_t>(m_depth)] == Unknown;
    --m_depth;
    return GoTo(isOpen ? m_at + 1 : m_at) || Fail(NotCbor);
}

bool CborInput::HasNext() {
    if (HasFailed()) return false;
    if (m_isBroken) return Fail(NotCbor);
    return !m_isAtEnd;
}

bool CborInput::Unsigned(quint64 maximum, quint64* number) {
    if (HasFailed()) return false;
    if (m_head.type != CborHead::Unsigned) return Fail("an unsigned integer was expected");
    *number = m_head.argument;
    if (*number > maximum) return Fail("a number is out of range");
    return Next();
}

bool CborInput::Id(quint32* id) {
    quint64 number = 0;
    if (!Unsigned(std::numeric_limits<quint32>::max(), &number)) return false;
    *id = static_cast<quint32>(number);
    return true;
}

bool CborInput::Integer(qint64* number) {
    if (HasFailed()) return false;
    constexpr auto Maximum = static_cast<quint64>(std::numeric_limits<qint64>::max());
    if (m_head.type > CborHead::Negative) return Fail("an integer was expected");
    if (m_head.argument > Maximum) return Fail("an integer is out of range");
    const auto magnitude = static_cast<qint64>(m_head.argument);
    *number = m_head.type == CborHead::Unsigned ? magnitude : -1 - magnitude;
    return Next();
}

bool CborInput::Boolean(bool* content) {
    if (HasFailed()) return false;
    const bool isTrue = m_head.info == CborHead::True;
    if (m_head.type != CborHead::Simple || !(isTrue || m_head.info == CborHead::False))
        return Fail("a boolean was expected");
    *content = isTrue;
    return Next();
}

double CborInput::FloatOfHead() const {
    double real = 0.0;
    if (m_head.info == CborHead::DoubleFloat) {
        std::memcpy(&real, &m_head.argument, sizeof real);
    } else if (m_head.info == CborHead::SingleFloat) {
        const auto bits = static_cast<quint32>(m_head.argument);
        float single = 0.0F;
        std::memcpy(&single, &bits, sizeof single);
        real = double{single};
    } else {
        const auto bits = static_cast<quint16>(m_head.argument);
        qfloat16 half;
        std::memcpy(static_cast<void*>(&half), &bits, sizeof half);  // it has no other way in
        real = static_cast<double>(static_cast<float>(half));
    }
    return real;
}

bool CborInput::Double(double* number) {
    if (HasFailed()) return false;
    if (m_head.IsFloat()) {
        *number = FloatOfHead();
        return Next();
    }
    qint64 integer = 0;
    if (!Integer(&integer)) return false;
    *number = static_cast<double>(integer);
    return true;
}

bool CborInput::Text(int maximum, QString* text) {
    if (HasFailed()) return false;
    if (m_head.type != CborHead::Text) return Fail("a text was expected");
    const quint8* const bytes = m_at + m_head.size;
    const quint64 size = m_head.argument;
    const quint8* end = nullptr;
    if (m_head.info == CborHead::Open) {
        if (!TextByQt(maximum, text, &end)) return false;
    } else {
        if (size > static_cast<quint64>(m_end - bytes)) return Fail(BadText);
        end = bytes + size;
        if (!IsAscii(bytes, size)) {
            if (!TextByQt(maximum, text, &end)) return false;
        } else {
            *text = QString::fromLatin1(reinterpret_cast<const char*>(bytes), static_cast<int>(size));
            if (text->size() > maximum) return Fail(LongText);
        }
    }
    return GoTo(end) || Fail(NotCbor);
}

/// Sets \a end to where the text ends.
bool CborInput::TextByQt(int maximum, QString* text, const quint8** end) {
    const qint64 size = m_end - m_at;
    QCborStreamReader reader(reinterpret_cast<const char*>(m_at), size);
    text->clear();
    for (;;) {
        // The reader allocates what a length announces before it looks whether that is there.
        if (reader.currentStringChunkSize() > size) return Fail(BadText);
        const auto part = reader.readString();
        if (part.status == QCborStreamReader::EndOfString) break;
        if (part.status == QCborStreamReader::Error) return Fail(BadText);
        if (text->isEmpty())
            *text = part.data;
        else
            text->append(part.data);
        if (text->size() > maximum) return Fail(LongText);
    }
    *end = m_at + reader.currentOffset();
    return true;
}

bool CborInput::ListContent(Content* content) {
    if (!Enter()) return false;
    QVector<double> items;
    while (HasNext()) {
        double item = 0.0;
        if (!Double(&item)) return false;
        items.append(item);
    }
    *content = items;
    return Leave();
}

bool CborInput::ReadContent(Content* content) {
    if (HasFailed()) return false;
    if (m_head.type <= CborHead::Negative) {
        qint64 number = 0;
        if (!Integer(&number)) return false;
        *content = number;
        return true;
    }
    if (m_head.IsFloat()) {
        *content = FloatOfHead();
        return Next();
    }
    if (m_head.type == CborHead::Text) {
        QString text;
        if (!Text(std::numeric_limits<int>::max(), &text)) return false;
        *content = text;
        return true;
    }
    if (IsArray()) return ListContent(content);
    if (m_head.type == CborHead::Simple && m_head.info == CborHead::Null) {
        *content = std::monostate();
        return Next();
    }
    bool flag = false;
    const bool isBoolean = m_head.info == CborHead::False || m_head.info == CborHead::True;
    if (m_head.type != CborHead::Simple || !isBoolean) return Fail("no content that a value can have");
    if (!Boolean(&flag)) return false;
    *content = flag;
    return true;
}

bool CborInput::Choices(std::vector<Choice>* choices) {
    choices->clear();
    if (!Enter()) return false;
    while (HasNext()) {
        Choice choice;
        if (!Text(std::numeric_limits<int>::max(), &choice.text)) return false;
        if (!Double(&choice.number) || !Integer(&choice.key)) return false;
        choices->push_back(std::move(choice));
    }
    return Leave();
}

bool CborInput::Item(ItemDescription* item) {
    quint64 kind = 0;
    if (!Unsigned(ItemKindCount - 1, &kind)) return false;
    item->kind = static_cast<EItemKind>(kind);
    const KindOperations* const operations = Operations(item->kind);
    if (operations == nullptr) return true;
    quint64 flags = 0;
    if (!Unsigned(ItemDescription::AllFlags, &flags)) return false;
    item->flags = static_cast<unsigned>(flags);
    if (!ReadContent(&item->content)) return false;
    if (operations->hasLimits && !(ReadContent(&item->minimum) && ReadContent(&item->maximum))) return false;
    if (operations->hasChoices && !Choices(&item->choices)) return false;
    return AcceptItem(item) || Fail("the content is not of the item's kind");
}

bool CborInput::Finish() {
    if (HasFailed()) return false;
    return m_at == m_end || Fail("bytes left over");
}

}  // namespace vt
