#include "recordingindex.h"

RecordingIndex::~RecordingIndex() {}

bool RecordingIndex::prepare(const GoOn&)
{
    return true;
}

quint64 RecordingIndex::findCut(quint64)
{
    return 0;
}
