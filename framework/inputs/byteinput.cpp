#include "byteinput.h"

#include "inputkind.h"
#include "recordingindex.h"
#include "streamdecoder.h"

#include <QCoreApplication>

ByteInput::ByteInput(const QString& name)
    : m_name(name)
{
}

ByteInput::~ByteInput() {}

void ByteInput::finish() {}

bool ByteInput::needsConfirmation() const
{
    return false;
}

void ByteInput::confirm(quint64) {}

qint64 ByteInput::getDroppedCount() const
{
    return -1;
}

QVector<StreamProblem> ByteInput::takeNotices()
{
    return QVector<StreamProblem>();
}

QVector<InputFile> ByteInput::getFiles() const
{
    return QVector<InputFile>();
}

bool ByteInput::isSeekable() const
{
    return false;
}

bool ByteInput::seek(qint64)
{
    setError(QCoreApplication::translate("ByteInput", "it has no other places to go to"));
    return false;
}

std::unique_ptr<RecordingIndex> ByteInput::createIndex()
{
    return nullptr;
}

void ByteInput::setError(const QString& reason)
{
    m_error = m_name + QLatin1String(": ") + reason;
}

ByteInput* ByteInput::create(const InputAddress& address)
{
    return address.kind->create(address);
}
