#ifndef PREFIXEDINPUT_H
#define PREFIXEDINPUT_H

#include "byteinput.h"

#include <QList>

#include <memory>

/** An input of which the first bytes were read already: they come once more, as they came. */
class PrefixedInput : public ByteInput
{
public:
    /**
     * @param input    open; owned from now on
     * @param pieces   what was read of it
     * @param isAtEnd  whether that was all
     */
    PrefixedInput(ByteInput* input, const QList<QByteArray>& pieces, bool isAtEnd);
    ~PrefixedInput() override;

    bool open() override;
    Status read(QByteArray* bytes, int timeoutMs) override;
    void cancel() override;
    void finish() override;
    bool needsConfirmation() const override;
    void confirm(quint64 offset) override;
    bool isLive() const override;
    bool isDatagram() const override;
    qint64 getSize() const override;
    qint64 getDroppedCount() const override;
    QVector<StreamProblem> takeNotices() override;

private:
    std::unique_ptr<ByteInput> m_input;
    QList<QByteArray> m_pieces;
    const bool m_isAtEnd;
};

#endif
