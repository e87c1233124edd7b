#include "robotcamera.h"
#include "robotmessages.h"
#include "robotmounting.h"

#include <QVector>

#include <cmath>
#include <limits>
#include <utility>

namespace
{

const double Pi = 3.14159265358979323846;

const int BeamCount = 360;
const double TurnTime = 0.1;        // seconds
const double RangeDeviation = 0.01; // metres
const int PixelsPerPoint = 4;       // to the right and down
const int PointSize = 16;

const char* const PointFields[] = {"x", "y", "z", "rgb"};

void appendReal32(QByteArray* bytes, float value)
{
    char text[sizeof value];
    qToLittleEndian(value, text);
    bytes->append(text, sizeof text);
}

RobotCamera cameraAt(const RobotModel& model)
{
    return RobotCamera(model.getPose(model.getTime()).mounted(RobotMounting::CameraAhead, 0));
}

} // namespace

QByteArray RobotMessages::scan()
{
    // It is sent when the turn is over, and the robot moved while it went on.
    const double begin = m_model.getTime() - TurnTime;
    const double angleStep = 2 * Pi / BeamCount;
    const double timeStep = TurnTime / BeamCount;
    const double reflection[] = {120, 90, 200};
    CdrWriter writer;
    header(&writer, "laser", begin);
    writer.real32(-Pi).real32(Pi - angleStep).real32(angleStep).real32(timeStep).real32(TurnTime);
    writer.real32(0.05).real32(20).count(BeamCount);
    QVector<double> intensities;
    for (int i = 0; i < BeamCount; ++i) {
        const RobotYard::Sight sight = RobotYard::look(
            m_model.getPose(begin + i * timeStep).mounted(RobotMounting::LaserAhead, 0).mounted(0, i * angleStep - Pi));
        writer.real32(sight.distance + RangeDeviation * m_numbers.normal());
        intensities.append(std::floor(reflection[sight.surface] / (1 + 0.1 * sight.distance)));
    }
    writer.count(intensities.size());
    for (const double intensity : std::as_const(intensities))
        writer.real32(intensity);
    return writer.bytes();
}

QByteArray RobotMessages::points()
{
    const RobotCamera camera = cameraAt(m_model);
    const int width = RobotCamera::Width / PixelsPerPoint;
    const int height = RobotCamera::Height / PixelsPerPoint;
    QByteArray data;
    data.reserve(width * height * PointSize);
    for (int line = PixelsPerPoint / 2; line < RobotCamera::Height; line += PixelsPerPoint) {
        for (int column = PixelsPerPoint / 2; column < RobotCamera::Width; column += PixelsPerPoint) {
            const RobotCamera::Pixel pixel = camera.look(column, line);
            const bool isSky = std::isinf(pixel.depth);
            for (const double share : {RobotCamera::right(column), RobotCamera::below(line), 1.0})
                appendReal32(&data, isSky ? std::numeric_limits<float>::quiet_NaN() : float(share * pixel.depth));
            // By habit a colour goes as the bytes of a number, blue first.
            data.append(char(pixel.blue)).append(char(pixel.green)).append(char(pixel.red)).append('\0');
        }
    }
    const int real32 = 7;
    CdrWriter writer;
    header(&writer, "camera_optical_frame", m_model.getTime()).number32(height).number32(width).count(4);
    for (quint32 i = 0; i < 4; ++i)
        writer.text(PointFields[i]).number32(4 * i).number8(real32).number32(1);
    writer.number8(0).number32(PointSize).number32(quint32(width * PointSize)).data(data).number8(0);
    return writer.bytes();
}

QByteArray RobotMessages::image()
{
    const RobotCamera camera = cameraAt(m_model);
    QByteArray data(RobotCamera::Width * RobotCamera::Height * 3, Qt::Uninitialized);
    char* byte = data.data();
    for (int line = 0; line < RobotCamera::Height; ++line) {
        for (int column = 0; column < RobotCamera::Width; ++column) {
            const RobotCamera::Pixel pixel = camera.look(column, line);
            *byte++ = char(pixel.red);
            *byte++ = char(pixel.green);
            *byte++ = char(pixel.blue);
        }
    }
    CdrWriter writer;
    header(&writer, "camera_optical_frame", m_model.getTime())
        .number32(RobotCamera::Height)
        .number32(RobotCamera::Width);
    writer.text("rgb8").number8(0).number32(RobotCamera::Width * 3).data(data);
    return writer.bytes();
}
