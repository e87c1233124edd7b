#include "drivesimulation.h"

#include "drivemessages.h"

#include <google/protobuf/compiler/parser.h>
#include <google/protobuf/descriptor.h>
#include <google/protobuf/descriptor.pb.h>
#include <google/protobuf/io/tokenizer.h>
#include <google/protobuf/io/zero_copy_stream_impl_lite.h>
#include <google/protobuf/timestamp.pb.h>

#include <cstring>

namespace
{

const char SchemaText[] = R"proto(
syntax = "proto3";

package corvel.demo;

import "google/protobuf/timestamp.proto";

// How a car moves, and the state that it is in.
message Vehicle {
  enum Gear {
    GEAR_UNKNOWN = 0;
    GEAR_PARK = 1;
    GEAR_REVERSE = 2;
    GEAR_DRIVE = 4;
  }

  google.protobuf.Timestamp stamp = 1;
  uint32 number = 2;
  string name = 3;
  Pose pose = 4;
  // Front left, front right, rear left, rear right.
  repeated Wheel wheels = 5;
  // Absent while nothing is hitched.
  optional Trailer trailer = 6;
  // It creeps with the motor and drives with the engine.
  oneof drive {
    Motor motor = 7;
    Engine engine = 8;
  }
  // In degrees Celsius.
  map<string, double> temperatures = 9;
  Gear gear = 10;
  // In metres per second; absent when cruise control is off.
  optional double target_speed = 11;
  // Centimetres to what is around, every 45 degrees from the front to the left.
  repeated sint32 ranges = 12;
  // In millimetres.
  uint64 odometer = 13;
  bytes key = 14;
}

message Pose {
  // Metres to the east and north of the start.
  double x = 1;
  double y = 2;
  // Radians from the east to the left.
  double heading = 3;
  // Metres per second.
  double speed = 4;
}

message Wheel {
  string position = 1;
  // Radians to the left.
  double steering = 2;
  // Radians per second.
  double rotation = 3;
  // In bar.
  float pressure = 4;
  // Told only by wheels that brake.
  optional bool slipping = 5;
}

message Trailer {
  string plate = 1;
  // In kilograms.
  double load = 2;
  repeated Wheel wheels = 3;
}

message Motor {
  // In newton metres.
  double torque = 1;
  // Of the battery, 0 to 1.
  double charge = 2;
}

message Engine {
  // Turns per minute.
  double turns = 1;
  // Of the tank, 0 to 1.
  double fuel = 2;
}

// A thing, and the things that it consists of.
message Part {
  string name = 1;
  uint32 serial = 2;
  // In kilograms, with its parts.
  double mass = 3;
  repeated Part parts = 4;
}
)proto";

const qint64 VehicleInterval = 50000;
const qint64 PartsInterval = 1000000;

} // namespace

DriveSimulation::DriveSimulation(const Simulation::Settings& settings)
    : ChannelSimulation(settings)
{
    for (int number = 1; number <= settings.senders; ++number) {
        const QByteArray topic = "/vehicle/" + QByteArray::number(number);
        addChannel({topic, "corvel.demo.Vehicle", VehicleInterval});
        addChannel({topic + "/parts", "corvel.demo.Part", PartsInterval});
    }
}

ChannelSimulation::Encoding DriveSimulation::getEncoding() const
{
    return {"protobuf", "protobuf"};
}

QByteArray DriveSimulation::getSchema(const QByteArray&) const
{
    using namespace google::protobuf;
    io::ArrayInputStream text(SchemaText, int(std::strlen(SchemaText)));
    io::Tokenizer tokenizer(&text, nullptr);
    FileDescriptorProto parsed;
    compiler::Parser().Parse(&tokenizer, &parsed);
    parsed.set_name("corvel/demo/vehicle.proto");

    // The pool completes the names of types.
    FileDescriptorSet files;
    Timestamp::descriptor()->file()->CopyTo(files.add_file());
    DescriptorPool pool;
    pool.BuildFile(files.file(0));
    const FileDescriptor* const file = pool.BuildFile(parsed);
    Q_ASSERT_X(file, "DriveSimulation", "the schema is wrong");
    FileDescriptorProto* const complete = files.add_file();
    file->CopyTo(complete);
    file->CopySourceCodeInfoTo(complete); // has the comments
    return QByteArray::fromStdString(files.SerializeAsString());
}

QByteArray DriveSimulation::makeMessage(int channel, qint64 sinceStart)
{
    const Simulation::Settings& settings = getSettings();
    const DriveMoment moment = {settings.seed, quint32(channel / 2 + 1), double(sinceStart) / 1000000,
                                settings.startTime + sinceStart};
    return channel % 2 ? DriveMessages::parts(moment) : DriveMessages::vehicle(moment);
}
