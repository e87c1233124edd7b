#include "robotschemas.h"

#include <QByteArrayList>

namespace
{

const struct
{
    const char* name;
    const char* text;
} Definitions[] = {
    {"builtin_interfaces/Time", R"(# A point in time, since 1970.
int32 sec       # [s]
uint32 nanosec  # what is left of a second [ns]
)"},
    {"std_msgs/Header", R"(# When something was measured, and where.
builtin_interfaces/Time stamp
string frame_id  # the frame in which numbers are meant
)"},
    {"std_msgs/String", R"(string data
)"},
    {"geometry_msgs/Vector3", R"(float64 x
float64 y
float64 z
)"},
    {"geometry_msgs/Point", R"(float64 x  # [m]
float64 y  # [m]
float64 z  # [m]
)"},
    {"geometry_msgs/Quaternion", R"(# A rotation; of length 1.
float64 x 0
float64 y 0
float64 z 0
float64 w 1
)"},
    {"geometry_msgs/Pose", R"(geometry_msgs/Point position
geometry_msgs/Quaternion orientation
)"},
    {"geometry_msgs/PoseWithCovariance", R"(geometry_msgs/Pose pose
float64[36] covariance  # by rows: x, y, z, and the rotations about them
)"},
    {"geometry_msgs/Twist", R"(geometry_msgs/Vector3 linear   # [m/s]
geometry_msgs/Vector3 angular  # [rad/s]
)"},
    {"geometry_msgs/TwistWithCovariance", R"(geometry_msgs/Twist twist
float64[36] covariance  # by rows: x, y, z, and the rotations about them
)"},
    {"geometry_msgs/Transform", R"(geometry_msgs/Vector3 translation  # [m]
geometry_msgs/Quaternion rotation
)"},
    {"geometry_msgs/TransformStamped", R"(# Where one frame lies in another, that of the header.
std_msgs/Header header
string child_frame_id
geometry_msgs/Transform transform
)"},
    {"tf2_msgs/TFMessage", R"(geometry_msgs/TransformStamped[] transforms
)"},
    {"nav_msgs/Odometry", R"(# Where a vehicle is by what its wheels say.
std_msgs/Header header
string child_frame_id                      # the frame of the speeds
geometry_msgs/PoseWithCovariance pose      # in the frame of the header
geometry_msgs/TwistWithCovariance twist
)"},
    {"sensor_msgs/Imu",
     R"(# What gyroscopes and accelerometers measure. Covariances are by rows; the first is -1 for what is not measured.
std_msgs/Header header
geometry_msgs/Quaternion orientation
float64[9] orientation_covariance
geometry_msgs/Vector3 angular_velocity         # [rad/s]
float64[9] angular_velocity_covariance
geometry_msgs/Vector3 linear_acceleration      # [m/s^2]
float64[9] linear_acceleration_covariance
)"},
    {"sensor_msgs/NavSatStatus", R"(# How a position was found.
int8 STATUS_NO_FIX=-1
int8 STATUS_FIX=0
int8 STATUS_SBAS_FIX=1
int8 STATUS_GBAS_FIX=2
int8 status
# Bits of the systems in use:
uint16 SERVICE_GPS=1
uint16 SERVICE_GLONASS=2
uint16 SERVICE_COMPASS=4
uint16 SERVICE_GALILEO=8
uint16 service
)"},
    {"sensor_msgs/NavSatFix", R"(# A position on the earth.
std_msgs/Header header
sensor_msgs/NavSatStatus status
float64 latitude   # to the north [deg]
float64 longitude  # to the east [deg]
float64 altitude   # above the ellipsoid [m]
float64[9] position_covariance  # east, north, up, by rows [m^2]
uint8 COVARIANCE_TYPE_UNKNOWN=0
uint8 COVARIANCE_TYPE_APPROXIMATED=1
uint8 COVARIANCE_TYPE_DIAGONAL_KNOWN=2
uint8 COVARIANCE_TYPE_KNOWN=3
uint8 position_covariance_type
)"},
    {"sensor_msgs/JointState", R"(# How joints stand; all lists are in the order of the names.
std_msgs/Header header
string[] name
float64[] position  # [rad]
float64[] velocity  # [rad/s]
float64[] effort    # [Nm]
)"},
    {"sensor_msgs/LaserScan", R"(# Distances that a turning laser measured, against the clock's sense.
std_msgs/Header header   # the time of the first
float32 angle_min        # of the first [rad]
float32 angle_max        # of the last [rad]
float32 angle_increment  # from one to the next [rad]
float32 time_increment   # from one to the next [s]
float32 scan_time        # from one turn to the next [s]
float32 range_min        # nearer ones mean nothing [m]
float32 range_max        # farther ones mean nothing [m]
float32[] ranges         # [m]
float32[] intensities    # in units of the device
)"},
    {"sensor_msgs/PointField", R"(# Where in the bytes of a point a number lies.
uint8 INT8=1
uint8 UINT8=2
uint8 INT16=3
uint8 UINT16=4
uint8 INT32=5
uint8 UINT32=6
uint8 FLOAT32=7
uint8 FLOAT64=8
string name
uint32 offset
uint8 datatype  # one of the constants
uint32 count
)"},
    {"sensor_msgs/PointCloud2", R"(# Points in space; of one line only, or of as many as a camera has.
std_msgs/Header header
uint32 height
uint32 width
sensor_msgs/PointField[] fields
bool is_bigendian
uint32 point_step  # from one point to the next [bytes]
uint32 row_step    # from one line to the next [bytes]
uint8[] data
bool is_dense      # whether there are no points without a place
)"},
    {"sensor_msgs/Image", R"(# A picture that is not compressed, from its upper left corner on.
std_msgs/Header header
uint32 height
uint32 width
string encoding  # what pixels consist of
uint8 is_bigendian
uint32 step      # from one line to the next [bytes]
uint8[] data
)"},
    {"diagnostic_msgs/KeyValue", R"(string key
string value
)"},
    {"diagnostic_msgs/DiagnosticStatus", R"(# How a part is.
byte OK=0
byte WARN=1
byte ERROR=2
byte STALE=3
byte level
string name
string message
string hardware_id
diagnostic_msgs/KeyValue[] values
)"},
    {"diagnostic_msgs/DiagnosticArray", R"(std_msgs/Header header
diagnostic_msgs/DiagnosticStatus[] status
)"},
};

/** Appends the definition of that type, and then all that it needs and @p done does not have yet. */
void append(const QByteArray& name, QByteArray* text, QByteArrayList* done)
{
    if (done->contains(name))
        return;
    if (!done->isEmpty())
        *text += QByteArray(80, '=') + "\nMSG: " + name + '\n';
    done->append(name);
    for (const auto& definition : Definitions) {
        if (name != definition.name)
            continue;
        *text += definition.text;
        for (const QByteArray& line : QByteArray(definition.text).split('\n')) {
            const QByteArray type = line.left(line.indexOf(' '));
            if (type.contains('/'))
                append(type.left(type.endsWith("[]") ? type.size() - 2 : type.size()), text, done);
        }
    }
}

} // namespace

QByteArray RobotSchemas::find(const QByteArray& type)
{
    QByteArray text;
    QByteArrayList done;
    append(QByteArray(type).replace("/msg/", "/"), &text, &done);
    return text;
}
