#include "definitions.h"
#include "encoding.h"
#include "messagereference.h"
#include "readfields.h"

#include <cstddef>
#include <cstdint>

namespace
{

const char idl[] = R"(
typedef double V[3];
@bit_bound(8) bitmask M { F, @position(3) G };
enum E { X, @value(5) Y };
@final struct P { octet a; unsigned long b; };
@appendable struct Q { string a; sequence<P> b; @optional double c; };
@mutable struct R { @id(3) long a; @optional sequence<string> b; Q q; E e[2]; };
union U switch (E) { case X: P p; case Y: R r; default: boolean b; };
EXTENSIBILITY struct T {
  boolean a; char c; wchar d; long double e; P p[3]; sequence<V> v; M m; U u; sequence<U, 2> us; R r; sequence<Q> qs;
  @optional string<3> s; sequence<E> es; octet bytes[5]; sequence<boolean> bs; WIDE
  builtin_interfaces::msg::Time t; sequence<builtin_interfaces::msg::Duration> ds; @optional P o; float last;
};
)";

const char msg[] = R"(
bool a
E[] empty
Time[] t
P[] fixed
Q[<=2] varying
string<=3 s
uint8[] bytes
float64[2] numbers
duration d
STATUS
==
MSG: p/E
==
MSG: p/P
uint8 x
uint32 y
bool z
==
MSG: p/Q
string x
E e
P[2] p
uint16[] n
)";

QByteArray schemaOf(int kind)
{
    static const char* const kinds[] = {"@final", "@appendable", "@mutable", ""};
    if (kind >= 4)
        return QByteArray(msg)
            .replace("Time[]", kind < 6 ? "builtin_interfaces/Time[]" : "time[]")
            .replace("STATUS", kind == 4 ? "wstring w" : "uint8 s_OK=0");
    return QByteArray(idl).replace("EXTENSIBILITY", kinds[kind]).replace("WIDE", kind == 3 ? "wstring w;" : "");
}

} // namespace

// Decodes the input by the schema that its first byte says, and reads every field of it, as deep as it goes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Definitions definitions;
    static const MessageInfo* infos[7] = {};
    if (size == 0)
        return 0;
    const int kind = data[0] % 7;
    if (!infos[kind]) {
        QString error;
        const char* const encoding = kind < 4 ? "omgidl" : kind < 6 ? "ros2msg" : "ros1msg";
        const char* const messages = kind < 6 ? "cdr" : "ros1";
        const QString name = QLatin1String(kind < 4 ? "T" : kind < 6 ? "p/msg/T" : "p/T");
        infos[kind] =
            definitions.find(QLatin1String(messages))->makeType({name, messages, encoding, schemaOf(kind)}, &error);
        if (!infos[kind])
            qFatal("%s", qPrintable(error));
    }
    const QByteArray bytes(reinterpret_cast<const char*>(data) + 1, static_cast<int>(size - 1));
    const MessageReference message = MessageReference::adopt(infos[kind]->newMessage(bytes));
    readFields(message.get());
    readPlaces(message.get());
    return 0;
}
