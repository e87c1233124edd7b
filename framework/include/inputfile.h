#ifndef CORVEL_INPUTFILE_H
#define CORVEL_INPUTFILE_H

#include "corvelframework_export.h"

#include <QString>

/** A regular file that an input reads. */
struct CORVELFRAMEWORK_EXPORT InputFile
{
    QString path;
    qint64 size; ///< bytes of it that are read
};

#endif
