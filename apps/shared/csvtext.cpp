#include "csvtext.h"

static QByteArray field(const QString& text)
{
    QByteArray utf8 = text.toUtf8();
    if (!utf8.contains(',') && !utf8.contains('"') && !utf8.contains('\n') && !utf8.contains('\r'))
        return utf8;
    utf8.replace("\"", "\"\"");
    return '"' + utf8 + '"';
}

QByteArray CsvText::line(const QStringList& fields)
{
    QByteArray line;
    for (int i = 0; i < fields.size(); ++i) {
        if (i > 0)
            line += ',';
        line += field(fields.at(i));
    }
    return line + "\r\n";
}
