// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/eventexporter.h>

#include <algorithm>

EventExporter::EventExporter(const EventModel& model) : m_model(model) {
    m_turns.setInterval(0);
    connect(&m_turns, &QTimer::timeout, this, &EventExporter::HaveTurn);
}

void EventExporter::Start(const QString& file, eventexport::EFormat format, const QString& server,
                          const QDateTime& now) {
    m_format = format;
    m_places = m_model.GetPlaces();
    m_next = 0;
    m_file.setFileName(file);
    const QByteArray head = eventexport::Head(m_model, format, server, now);
    if (!m_file.open(QIODevice::WriteOnly) || m_file.write(head) != head.size()) return End(false);
    m_turns.start();
}

void EventExporter::HaveTurn() {
    QByteArray bytes;
    const std::size_t end = std::min(m_next + RowsPerTurn, m_places.size());
    for (; m_next < end; ++m_next)
        if (m_places[m_next] >= m_model.GetList().First())
            bytes += eventexport::ToBytes(m_model.GetList().At(m_places[m_next]), m_format);
    if (m_file.write(bytes) != bytes.size())
        End(false);
    else if (m_next == m_places.size())
        End(m_file.commit());
}

void EventExporter::End(bool isWritten) {
    m_turns.stop();
    const QString problem = isWritten ? QString() : m_file.errorString();
    if (!isWritten && m_file.isOpen()) m_file.cancelWriting();
    Q_EMIT Ended(problem);
}
