// SPDX-License-Identifier: Apache-2.0
#include <fuzz/qtcborinput.h>

#include <platform/vtclient/wire/itemkinds.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <limits>

using namespace vt;

bool QtCborInput::Fail(const char* what) {
    if (m_error.isEmpty()) m_error = QLatin1String(what);
    return false;
}

bool QtCborInput::Next() {
    return m_reader.next() || Fail("not well-formed CBOR");
}

bool QtCborInput::Enter() {
    if (HasFailed()) return false;
    if (!m_reader.isArray()) return Fail("an array was expected");
    return m_reader.enterContainer() || Fail("not well-formed CBOR");
}

bool QtCborInput::Leave() {
    if (HasFailed()) return false;
    if (m_reader.lastError() != QCborError::NoError) return Fail("not well-formed CBOR");
    if (m_reader.hasNext()) return Fail("more elements than expected");
    return m_reader.leaveContainer() || Fail("not well-formed CBOR");
}

bool QtCborInput::HasNext() {
    if (HasFailed()) return false;
    if (m_reader.lastError() != QCborError::NoError) return Fail("not well-formed CBOR");
    return m_reader.hasNext();
}

bool QtCborInput::Unsigned(quint64 maximum, quint64* number) {
    if (HasFailed()) return false;
    if (!m_reader.isUnsignedInteger()) return Fail("an unsigned integer was expected");
    *number = m_reader.toUnsignedInteger();
    if (*number > maximum) return Fail("a number is out of range");
    return Next();
}

bool QtCborInput::Id(quint32* id) {
    quint64 number = 0;
    if (!Unsigned(std::numeric_limits<quint32>::max(), &number)) return false;
    *id = static_cast<quint32>(number);
    return true;
}

bool QtCborInput::Integer(qint64* number) {
    if (HasFailed()) return false;
    constexpr auto Maximum = static_cast<quint64>(std::numeric_limits<qint64>::max());
    if (m_reader.isUnsignedInteger()) {
        if (m_reader.toUnsignedInteger() > Maximum) return Fail("an integer is out of range");
    } else if (m_reader.isNegativeInteger()) {
        // The number is -1 - n, and 2^64 is given as 0.
        const auto negative = static_cast<quint64>(m_reader.toNegativeInteger());
        if (negative == 0 || negative - 1 > Maximum) return Fail("an integer is out of range");
    } else {
        return Fail("an integer was expected");
    }
    *number = m_reader.toInteger();
    return Next();
}

bool QtCborInput::Boolean(bool* content) {
    if (HasFailed()) return false;
    if (!m_reader.isBool()) return Fail("a boolean was expected");
    *content = m_reader.toBool();
    return Next();
}

bool QtCborInput::Double(double* number) {
    if (HasFailed()) return false;
    if (m_reader.isDouble()) {
        *number = m_reader.toDouble();
    } else if (m_reader.isFloat()) {
        *number = double{m_reader.toFloat()};
    } else if (m_reader.isFloat16()) {
        *number = static_cast<double>(static_cast<float>(m_reader.toFloat16()));
    } else {
        qint64 integer = 0;
        if (!Integer(&integer)) return false;
        *number = static_cast<double>(integer);
        return true;
    }
    return Next();
}

bool QtCborInput::Text(int maximum, QString* text) {
    if (HasFailed()) return false;
    if (!m_reader.isString()) return Fail("a text was expected");
    text->clear();
    for (;;) {
        // The reader allocates what a length announces before it looks whether that is there.
        if (m_reader.currentStringChunkSize() > m_size) return Fail("a text is not well-formed");
        const auto part = m_reader.readString();
        if (part.status == QCborStreamReader::EndOfString) break;
        if (part.status == QCborStreamReader::Error) return Fail("a text is not well-formed");
        if (text->isEmpty())
            *text = part.data;
        else
            text->append(part.data);
        if (text->size() > maximum) return Fail("a text is too long");
    }
    // Where no element follows, a text that is not there would be read next.
    return m_reader.lastError() == QCborError::NoError || Fail("not well-formed CBOR");
}

bool QtCborInput::ListContent(Content* content) {
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

bool QtCborInput::ReadContent(Content* content) {
    if (HasFailed()) return false;
    switch (m_reader.type()) {
        case QCborStreamReader::UnsignedInteger:
        case QCborStreamReader::NegativeInteger: {
            qint64 number = 0;
            if (!Integer(&number)) return false;
            *content = number;
            return true;
        }
        case QCborStreamReader::Double:
        case QCborStreamReader::Float:
        case QCborStreamReader::Float16: {
            double number = 0.0;
            if (!Double(&number)) return false;
            *content = number;
            return true;
        }
        case QCborStreamReader::String: {
            QString text;
            if (!Text(std::numeric_limits<int>::max(), &text)) return false;
            *content = text;
            return true;
        }
        case QCborStreamReader::Array:
            return ListContent(content);
        default:
            break;
    }
    if (m_reader.isNull()) {
        *content = std::monostate();
        return Next();
    }
    bool flag = false;
    if (!m_reader.isBool()) return Fail("no content that a value can have");
    if (!Boolean(&flag)) return false;
    *content = flag;
    return true;
}

bool QtCborInput::Choices(std::vector<Choice>* choices) {
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

bool QtCborInput::Item(ItemDescription* item) {
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

bool QtCborInput::Finish() {
    if (HasFailed()) return false;
    return m_reader.currentOffset() == m_size || Fail("bytes left over");
}
