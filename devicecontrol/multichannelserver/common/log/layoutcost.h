// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QHash>
#include <QtCore/QSet>

#include <vector>

class QTextBlock;
class QTextCharFormat;
class QTextDocument;
class QTextFormat;
class QTextFrame;

/// What laying out and drawing some paragraphs of a document takes, found out before it is done: as the
/// document has read them, so nothing is hidden by how it is spelled. Anybody who may log chooses what they
/// hold.
///
/// A table lays out its cells twice, so what stands in ten of them takes a thousand times as long. Beyond
/// 8,388,607 pixels a document does not find its end any more.
class LayoutCost {
  public:
    /// Of the paragraphs of \a document from \a firstBlock on.
    LayoutCost(const QTextDocument& document, int firstBlock);

    /// ns, measured and rather too long.
    qint64 Get() const { return m_cost; }
    /// Whether it can be shown at all: no length, and not all of them together, is out of any proportion.
    bool IsInProportion() const { return m_isInProportion; }
    /// Whether there are tables or other frames.
    bool HasFrames() const { return m_hasFrames; }

  private:
    void AddBlock(const QTextBlock& block);
    void Enter(const QTextBlock& block);
    void AddFrame(const QTextFrame& frame);
    double AddFragments(const QTextBlock& block);
    double HeightOf(const QTextCharFormat& format);
    void Check(const QTextFormat& format);

    const QTextDocument& m_document;
    QHash<int, double> m_heights;  ///< of the lines that a format gives, by its index
    std::vector<int> m_frames;     ///< in which the paragraph stands, by their objects' numbers
    QSet<quint64> m_fonts;
    qint64 m_cost = 0;
    double m_height = 0;
    int m_floating = 0;
    bool m_hasFrames = false;
    bool m_isInProportion = true;
};
