#include "recordingindex.h"

RecordingIndex::~RecordingIndex() {}
