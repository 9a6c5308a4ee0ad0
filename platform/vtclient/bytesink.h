// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QIODevice>

namespace vt {

/// Collects what a stream writer writes, without a buffer between. What came last can be taken back, which a
/// QBuffer does not let one do under a writer.
class ByteSink final : public QIODevice {
  public:
    ByteSink() { open(QIODevice::WriteOnly | QIODevice::Unbuffered); }
    bool isSequential() const override { return true; }

    int Size() const { return m_bytes.size(); }
    const QByteArray& Bytes() const { return m_bytes; }
    void Truncate(int size) { m_bytes.resize(size); }
    /// The bytes, after which the sink is empty and keeps its room.
    QByteArray Take() {
        QByteArray taken(m_bytes.constData(), m_bytes.size());
        m_bytes.resize(0);
        return taken;
    }
    void Append(const char* data, int size) { m_bytes.append(data, size); }

  protected:
    qint64 readData(char* /*data*/, qint64 /*size*/) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override {
        m_bytes.append(data, static_cast<int>(size));
        return size;
    }

  private:
    QByteArray m_bytes;
};

}  // namespace vt
