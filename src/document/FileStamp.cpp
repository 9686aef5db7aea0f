#include "document/FileStamp.h"

bool ReadStamp(Platform::File& file, FileStamp& stamp) {
    FileStamp read;
    if (!file.GetTime(read.time) || !file.GetSize(read.size)) return false;
    stamp = read;
    return true;
}

bool ReadStamp(const Char* name, FileStamp& stamp) {
    Platform::File file;
    return file.Open(name, Platform::File::Mode::Attributes) && ReadStamp(file, stamp);
}
