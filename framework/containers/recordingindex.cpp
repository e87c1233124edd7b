#include "recordingindex.h"

RecordingIndex::~RecordingIndex() {}

bool RecordingIndex::prepare(const GoOn&)
{
    return true;
}
