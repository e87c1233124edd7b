#ifndef DUMPSINK_H
#define DUMPSINK_H

#include "streamdecoder.h"

#include <QSet>

#include <cstdio>
#include <string>

/** Prints what is wrong with a stream to the error stream; what is made of the messages is up to derived classes. */
class DumpSink : public StreamSink
{
public:
    /** @param decoder  knows the senders; must outlive this object, and must not be null */
    DumpSink(const QString& inputName, const StreamDecoder* decoder);

    void processReceived(const ReceivedMessage& message) final;
    void processProblem(const StreamProblem& problem) final;
    /** Takes note of a problem that was told already. */
    virtual void count(const StreamProblem& problem) = 0;

    /** Prints what is printed at the end. */
    virtual void finish() = 0;

    /** What else was wrong, when everything was read; empty when nothing was. */
    virtual QString getComplaint() const { return QString(); }

    /** Whether standard output cannot be written to any more; errno of the first failure, else 0. */
    int getOutputError() const { return m_outputError; }

protected:
    virtual void consume(const ReceivedMessage& message) = 0;

    const QString& getInputName() const { return m_inputName; }
    const StreamDecoder* getDecoder() const { return m_decoder; }
    void print(const std::string& text);

private:
    void publishTypes(quint64 offset);
    void printProblem(quint64 offset, const QString& text);

    QString m_inputName;
    const StreamDecoder* m_decoder;
    QSet<quint32> m_unknownIds; // those already told about
    int m_outputError;
};

#endif
