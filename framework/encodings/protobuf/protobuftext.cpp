#include "protobuftext.h"

#include <QRegularExpression>
#include <QStringList>

QString ProtobufText::commentText(const std::string& leading, const std::string& trailing)
{
    QStringList paragraphs;
    for (const std::string* comment : {&leading, &trailing}) {
        QString paragraph;
        const QStringList lines = fromUtf8(*comment).split(QLatin1Char('\n'));
        for (const QString& line : lines) {
            static const QRegularExpression decoration(QStringLiteral("^[\\s/*!<]*"));
            const QString text = QString(line).remove(decoration).simplified();
            if (!text.isEmpty()) {
                paragraph += (paragraph.isEmpty() ? QString() : QStringLiteral(" ")) + text;
            } else if (!paragraph.isEmpty()) {
                paragraphs.append(paragraph);
                paragraph.clear();
            }
        }
        if (!paragraph.isEmpty())
            paragraphs.append(paragraph);
    }
    return paragraphs.join(QLatin1Char('\n'));
}

QString ProtobufText::firstParagraph(const QString& text)
{
    return text.section(QLatin1Char('\n'), 0, 0);
}
