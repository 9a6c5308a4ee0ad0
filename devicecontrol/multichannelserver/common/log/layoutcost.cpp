// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/log/layoutcost.h>

#include <devicecontrol/multichannelserver/common/log/textcost.h>

#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtGui/QTextList>
#include <QtGui/QTextTable>

#include <cmath>

namespace {

constexpr qint64 Block = 3000;         // ns each
constexpr qint64 Fragment = 1500;      // a run of one format
constexpr qint64 Font = 300000;        // is looked for
constexpr qint64 FloatingPair = 1100;  // keep out of each other's way
constexpr int MostFrames = 20;         // within each other that are still told apart
constexpr double MostPixels = 1000.0;  // of any length, and points, and percents of a line
constexpr double MostHeight = 2000000.0;
constexpr double MostHeightOfFrames = 40000.0;  // many of them may come in a frame of the screen
constexpr double PixelsPerPoint = 2.0;          // with what is between lines

bool IsInProportion(double length) {
    return std::fabs(length) <= MostPixels;  // also no NaN
}

bool IsInProportion(const QTextLength& length) {
    return length.type() == QTextLength::VariableLength || IsInProportion(length.rawValue());
}

bool IsLength(int property) {
    switch (property) {
        case QTextFormat::BlockIndent:
        case QTextFormat::FontPixelSize:
        case QTextFormat::FontSizeAdjustment:
        case QTextFormat::ListIndent:
            return true;
        default:
            return false;
    }
}

double FontHeight(const QFont& font) {
    return font.pixelSize() > 0 ? 1.5 * font.pixelSize() : PixelsPerPoint * font.pointSizeF();
}

}  // namespace

LayoutCost::LayoutCost(const QTextDocument& document, int firstBlock) : m_document(document) {
    for (QTextBlock block = document.findBlockByNumber(firstBlock); block.isValid(); block = block.next())
        AddBlock(block);
    if (m_height > (m_hasFrames ? MostHeightOfFrames : MostHeight)) m_isInProportion = false;
}

void LayoutCost::AddBlock(const QTextBlock& block) {
    Enter(block);
    if (const QTextList* const list = block.textList()) Check(list->format());
    const QString text = block.text();
    const double lineHeight = AddFragments(block);
    const QTextBlockFormat format = block.blockFormat();
    const double factor = format.lineHeightType() == QTextBlockFormat::ProportionalHeight
                              ? qMax(1.0, format.lineHeight() / 100)
                              : 1.0;
    m_height += (1 + text.count(QChar(QChar::LineSeparator))) * (lineHeight * factor + format.lineHeight()) +
                format.topMargin() + format.bottomMargin();
    m_cost += (Block + textcost::Of(text)) << qMin(static_cast<int>(m_frames.size()), MostFrames);
}

/// \return the height of the highest line.
double LayoutCost::AddFragments(const QTextBlock& block) {
    Check(block.blockFormat());
    double highest = FontHeight(block.charFormat().font());
    for (auto at = block.begin(); !at.atEnd(); ++at) {
        m_cost += Fragment;
        const int index = at.fragment().charFormatIndex();
        const QTextCharFormat format = at.fragment().charFormat();
        if (format.objectIndex() != -1) m_cost += FloatingPair * m_floating++;
        if (!m_heights.contains(index)) m_heights.insert(index, HeightOf(format));
        highest = qMax(highest, m_heights.value(index));
    }
    return highest;
}

/// Of a format that was not there before.
double LayoutCost::HeightOf(const QTextCharFormat& format) {
    Check(format);
    if (format.isImageFormat()) return format.toImageFormat().height();
    const QFont font = format.font();
    if (!m_fonts.contains(qHash(font))) m_cost += Font;
    m_fonts.insert(qHash(font));
    return FontHeight(font);
}

/// What parts a paragraph from the one before says where frames begin and end, and cells of a table.
void LayoutCost::Enter(const QTextBlock& block) {
    constexpr ushort begin = 0xfdd0;
    constexpr ushort end = 0xfdd1;
    const QTextTableCellFormat format = block.charFormat().toTableCellFormat();
    Check(block.charFormat());
    m_height += format.topPadding() + format.bottomPadding();
    const QChar separator = m_document.characterAt(block.position() - 1);
    const int object = block.charFormat().objectIndex();
    if (separator == QChar(begin) && (m_frames.empty() || m_frames.back() != object)) {
        m_frames.push_back(object);
        m_hasFrames = true;
        if (const auto* const frame = qobject_cast<const QTextFrame*>(m_document.object(object)))
            AddFrame(*frame);
    } else if (separator == QChar(end) && !m_frames.empty()) {
        m_frames.pop_back();
    }
}

void LayoutCost::AddFrame(const QTextFrame& frame) {
    const QTextFrameFormat format = frame.frameFormat();
    Check(format);
    if (format.position() != QTextFrameFormat::InFlow) m_cost += FloatingPair * m_floating++;
    m_height += format.topMargin() + format.bottomMargin() + 2 * (format.padding() + format.border());
    const auto* const table = qobject_cast<const QTextTable*>(&frame);
    if (table == nullptr) return;
    const QTextTableFormat own = table->format();
    for (const QTextLength& width : own.columnWidthConstraints())
        if (!::IsInProportion(width)) m_isInProportion = false;
    m_height += (table->rows() + 1) * (2 * (own.cellPadding() + own.border()) + own.cellSpacing());
}

void LayoutCost::Check(const QTextFormat& format) {
    const QMap<int, QVariant> properties = format.properties();
    for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
        const QVariant& value = property.value();
        if (value.userType() == QMetaType::Double || IsLength(property.key()))
            m_isInProportion = m_isInProportion && ::IsInProportion(value.toDouble());
        else if (value.userType() == qMetaTypeId<QTextLength>())
            m_isInProportion = m_isInProportion && ::IsInProportion(value.value<QTextLength>());
    }
}
