#ifndef FRAMEOUTPUT_H
#define FRAMEOUTPUT_H

#include "framesource.h"
#include "options.h"

class ChannelSimulation;

/** Where simulated frames go. */
class FrameOutput
{
public:
    virtual ~FrameOutput();

    /**
     * What the options name; never null.
     *
     * @param channels  what a recording is described by, borrowed for the call; null where single frames are written
     */
    static std::unique_ptr<FrameOutput> create(const Options& options, const ChannelSimulation* channels);

    /** False when it can't be opened. */
    virtual bool open() = 0;
    /** False when it can't be written. */
    virtual bool write(const SimulatedFrame& frame) = 0;
    /** Hands on what is kept back; false when it can't be written. */
    virtual bool flush() = 0;
    /** Ends what is written; false when it can't be written. */
    virtual bool close() { return flush(); }

    /** Why the last operation failed; names the output. */
    const QString& getError() const { return m_error; }

protected:
    bool fail(const QString& name, const QString& reason);

private:
    QString m_error;
};

#endif
