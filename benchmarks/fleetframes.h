#ifndef FLEETFRAMES_H
#define FLEETFRAMES_H

#include "mavlinkdialect.h"
#include "mavlinkencoder.h"
#include "simulation.h"

#include <QHash>

#include <vector>

/**
 * Frames of MAVLink in which each of so many senders sends each of the 18 types of a simulated vehicle, in turn.
 *
 * A link has 250 systems; senders beyond that are further components of these.
 */
inline std::vector<QByteArray> fleetFrames(int senders, int rounds)
{
    const std::unique_ptr<MavlinkDialect> dialect(MavlinkDialect::loadBuiltIn());
    Simulation simulation{Simulation::Settings()};
    QHash<quint32, QByteArray> payloads;
    while (payloads.size() < 18) {
        const QByteArray frame = simulation.takeNext().bytes;
        const quint32 id = quint8(frame.at(7)) | quint32(quint8(frame.at(8))) << 8;
        payloads.insert(id, frame.mid(10, quint8(frame.at(1))));
    }
    QList<quint32> ids = payloads.keys();
    std::sort(ids.begin(), ids.end());
    std::vector<QByteArray> frames;
    std::vector<quint8> sequences(std::size_t(senders), 0);
    for (int round = 0; round < rounds; ++round) {
        for (int sender = 0; sender < senders; ++sender) {
            for (const quint32 id : std::as_const(ids)) {
                MavlinkEncoder::FrameHeader header;
                header.system = quint8(1 + sender % 250);
                header.component = quint8(1 + sender / 250);
                header.sequence = sequences[std::size_t(sender)]++;
                QByteArray payload = payloads.value(id);
                payload[0] = char(round); // so that values change
                frames.push_back(MavlinkEncoder::toFrame(header, id, dialect->find(id)->getCrcExtra(), payload));
            }
        }
    }
    return frames;
}

#endif
