#ifndef SAMPLEMESSAGE_H
#define SAMPLEMESSAGE_H

#include <QByteArray>

/** A type with all kinds of fields, and messages of it. */
namespace SampleMessage
{

const char Dialect[] = R"(<?xml version="1.0"?>
<mavlink>
  <enums>
    <enum name="LIGHTS" bitmask="true">
      <entry value="1" name="LEFT"/>
      <entry value="4" name="RIGHT"/>
    </enum>
  </enums>
  <messages>
    <message id="200" name="SAMPLE">
      <description>All kinds of fields.</description>
      <field type="char" name="letter">x</field>
      <field type="int64_t" name="least">x</field>
      <field type="uint64_t" name="most">x</field>
      <field type="double" name="tenth">x</field>
      <field type="float" name="tenthf" units="m/s">x</field>
      <field type="float" name="none">x</field>
      <field type="float" name="below">x</field>
      <field type="char[8]" name="text">x</field>
      <field type="uint16_t[3]" name="list">x</field>
      <field type="uint8_t" name="lights" enum="LIGHTS">x</field>
      <extensions/>
      <field type="uint8_t" name="extra">x</field>
    </message>
  </messages>
</mavlink>
)";

// Frames of system 7, component 9, in hexadecimal, which differ in their texts.
const QByteArray Numbers = "0709C8 0000000000000080 FFFFFFFFFFFFFFFF 9A9999999999B93F CDCCCC3D 0000C07F 000080FF"
                           "010000 00FFFF 41";
const QByteArray Sample1 = "FE3401" + Numbers + "61225C0AC3A9FF00 0D 9564";
const QByteArray Sample2 = "FE3402" + Numbers + "3132333435363738 0D 4A4E";
const QByteArray Sample3 = "FE3403" + Numbers + "0000000000000000 0D CAE3";
const QByteArray Heartbeat = "FE0901 0709002A0100000203510403 BA64";

} // namespace SampleMessage

#endif
