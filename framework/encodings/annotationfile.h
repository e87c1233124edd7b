#ifndef ANNOTATIONFILE_H
#define ANNOTATIONFILE_H

#include "jsonlocator.h"

#include <QJsonObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

class MessageInfo;

/** An annotation file that was read, to be applied to types once or as they come. */
class AnnotationFile
{
public:
    /** What the types that it is applied to are. */
    enum Extent
    {
        AllTypes, ///< all there are: what names another one is wrong
        SomeTypes ///< others can come later
    };

    /** Null when the file cannot be read or is no JSON. */
    static std::unique_ptr<AnnotationFile> read(const QString& path, QStringList* errors);

    /** Appends what is wrong to @p errors, except what was appended by an earlier call. */
    void apply(const QVector<const MessageInfo*>& infos, Extent extent, QStringList* errors);

private:
    AnnotationFile(const QString& path, const QByteArray& text, const QJsonObject& root);

    QString m_path;
    JsonLocator m_locator;
    QJsonObject m_root;
    QSet<QString> m_told;
};

#endif
