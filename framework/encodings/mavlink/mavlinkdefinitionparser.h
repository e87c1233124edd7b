#ifndef MAVLINKDEFINITIONPARSER_H
#define MAVLINKDEFINITIONPARSER_H

#include "mavlinkdefinition.h"

#include <QXmlStreamReader>

/** Reads one XML file of a dialect. Knows nothing of other files: includes are only listed. */
class MavlinkDefinitionParser
{
public:
    /**
     * @param path    how the file is called in errors
     * @param bytes   its contents
     * @param errors  where errors go; must not be null and must outlive this object
     */
    MavlinkDefinitionParser(const QString& path, const QByteArray& bytes, MavlinkDefinitionErrors* errors);

    /** Everything that could be read; what is wrong is reported and left out. To be called once. */
    MavlinkDefinitionFile parse();

private:
    MavlinkPlace here() const;
    void fail(const QString& text);
    bool atElement(const char* name) const;
    QString attribute(const char* name) const;
    QString readText();

    void parseEnums();
    void parseEnum();
    MavlinkEntryDefinition parseEntry();
    void parseMessages();
    void parseMessage();
    MavlinkFieldDefinition parseField(bool extension);
    void parseType(const QString& text, MavlinkFieldDefinition* field);

    QXmlStreamReader m_xml;
    MavlinkDefinitionErrors* m_errors;
    MavlinkDefinitionFile m_file;
};

#endif
