#ifndef PREFIXEDINPUT_H
#define PREFIXEDINPUT_H

#include "byteinput.h"

#include <memory>

/** An input of which the first bytes were read already: they come once more. */
class PrefixedInput : public ByteInput
{
public:
    /**
     * @param input  open; owned from now on
     * @param head   what was read of it
     */
    PrefixedInput(ByteInput* input, const QByteArray& head);
    ~PrefixedInput() override;

    bool open() override;
    Status read(QByteArray* bytes, int timeoutMs) override;
    void cancel() override;
    bool isLive() const override;
    bool isDatagram() const override;
    qint64 getSize() const override;

private:
    std::unique_ptr<ByteInput> m_input;
    QByteArray m_head;
};

#endif
