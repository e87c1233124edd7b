#include "drivemessages.h"

#include <QtEndian>
#include <QVector>

#include <algorithm>
#include <cmath>

namespace
{

const double Pi = 3.14159265358979323846;

/** Appends fields as Protocol Buffers write them. */
class Fields
{
public:
    const QByteArray& bytes() const { return m_bytes; }

    Fields& number(int field, quint64 value)
    {
        varint(quint64(field) << 3);
        varint(value);
        return *this;
    }

    Fields& real(int field, double value)
    {
        varint(quint64(field) << 3 | 1);
        fixed(value);
        return *this;
    }

    Fields& real32(int field, float value)
    {
        varint(quint64(field) << 3 | 5);
        fixed(value);
        return *this;
    }

    Fields& text(int field, const QByteArray& value)
    {
        varint(quint64(field) << 3 | 2);
        varint(quint64(value.size()));
        m_bytes += value;
        return *this;
    }

    Fields& message(int field, const Fields& value) { return text(field, value.bytes()); }

    Fields& packedSigned(int field, const QVector<qint32>& values)
    {
        Fields packed;
        for (const qint32 value : values)
            packed.varint(quint32(value) << 1 ^ (value < 0 ? 0xffffffffu : 0u));
        return text(field, packed.bytes());
    }

private:
    void varint(quint64 value)
    {
        for (; value > 0x7f; value >>= 7)
            m_bytes += char(value | 0x80);
        m_bytes += char(value);
    }

    template <typename Real>
    void fixed(Real value)
    {
        char text[sizeof value];
        qToLittleEndian(value, text);
        m_bytes.append(text, sizeof text);
    }

    QByteArray m_bytes;
};

/** The motion of the car: it stops now and then, and each drives a circle of its own. */
struct Motion
{
    explicit Motion(const DriveMoment& moment)
        : phase(moment.seconds + (moment.seed * 7 + moment.number * 13) % 97)
        , radius(20 + 5.0 * (moment.number % 10))
        , speed(std::max(0.0, 10 + 9 * std::sin(phase / 8) + 3 * std::sin(phase / 1.7)))
        // The distance belongs to the speed wherever that is not cut off at 0.
        , distance(10 * phase - 72 * std::cos(phase / 8) - 5.1 * std::cos(phase / 1.7) + 80)
        , braking(std::cos(phase / 8) < -0.5)
    {
    }

    double phase;
    double radius;
    double speed;    // metres a second
    double distance; // metres
    bool braking;
};

Fields wheel(const char* position, const Motion& motion, double steering, double pressure)
{
    Fields fields;
    fields.text(1, position).real(2, steering).real(3, motion.speed / 0.31).real32(4, float(pressure));
    if (motion.braking)
        fields.number(5, motion.speed > 12 && steering != 0);
    return fields;
}

Fields trailer(const DriveMoment& moment, const Motion& motion)
{
    Fields fields;
    fields.text(1, "CV " + QByteArray::number(100 + moment.number)).real(2, 350.5);
    for (const char* position : {"left", "right"})
        fields.message(3, wheel(position, motion, 0, 3.1));
    return fields;
}

Fields part(const char* name, quint32 serial, double mass, const QVector<Fields>& parts = QVector<Fields>())
{
    Fields fields;
    fields.text(1, name).number(2, serial).real(3, mass);
    for (const Fields& inner : parts)
        fields.message(4, inner);
    return fields;
}

} // namespace

QByteArray DriveMessages::vehicle(const DriveMoment& moment)
{
    const Motion motion(moment);
    const double angle = motion.distance / motion.radius;
    const double steering = std::atan(2.7 / motion.radius);
    Fields stamp;
    stamp.number(1, quint64(moment.time / 1000000)).number(2, quint64(moment.time % 1000000 * 1000));
    Fields pose;
    pose.real(1, motion.radius * std::sin(angle))
        .real(2, motion.radius * (1 - std::cos(angle)))
        .real(3, std::remainder(angle, 2 * Pi))
        .real(4, motion.speed);

    Fields fields;
    fields.message(1, stamp).number(2, moment.number);
    fields.text(3, "Car " + QByteArray::number(moment.number)).message(4, pose);
    const double pressure = 2.4 + 0.02 * std::sin(motion.phase / 30);
    fields.message(5, wheel("front left", motion, steering, pressure))
        .message(5, wheel("front right", motion, steering * 0.97, pressure))
        .message(5, wheel("rear left", motion, 0, pressure + 0.1))
        .message(5, wheel("rear right", motion, 0, pressure + 0.1));
    if (std::fmod(motion.phase, 60) >= 30)
        fields.message(6, trailer(moment, motion));
    if (motion.speed < 6)
        fields.message(7, Fields().real(1, 40 + 10 * std::sin(motion.phase)).real(2, 0.8));
    else
        fields.message(8, Fields().real(1, 900 + motion.speed * 110).real(2, 0.5));
    const auto temperature = [&fields](const char* where, double value) {
        fields.message(9, Fields().text(1, where).real(2, value));
    };
    temperature("engine", 80 + motion.speed * 0.7);
    temperature("cabin", 21.5);
    if (motion.braking)
        temperature("brakes", 60 + motion.speed * 4);
    fields.number(10, motion.speed > 0 ? 4 : 1);
    if (!motion.braking)
        fields.real(11, 13.9);
    QVector<qint32> ranges;
    for (int i = 0; i < 8; ++i)
        ranges.append(qint32(400 + 350 * std::sin(angle + i * Pi / 4)));
    ranges[4] = -1; // the sensor behind is broken
    fields.packedSigned(12, ranges);
    fields.number(13, quint64(std::max(0.0, motion.distance * 1000)));
    fields.text(14, QByteArray("\x00\xc0\xff\xee", 4) + char(moment.number));
    return fields.bytes();
}

QByteArray DriveMessages::parts(const DriveMoment& moment)
{
    const quint32 serial = moment.number * 1000;
    const Fields piston =
        part("piston", serial + 4, 0.6, {part("ring", serial + 5, 0.05), part("pin", serial + 6, 0.1)});
    const Fields engine = part("engine", serial + 1, 140, {part("block", serial + 2, 80, {piston, piston})});
    return part("car", serial, 1420 + std::floor(moment.seconds) * -0.001, {engine, part("body", serial + 7, 600)})
        .bytes();
}
