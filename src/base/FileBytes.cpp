#include "base/FileBytes.h"

#include "base/Checksum.h"
#include "base/Heap.h"

namespace {

constexpr size_t PieceBytes = 65536;

class SumSink final : public ByteSink {
public:
    explicit SumSink(Checksum& target) : sum(target) {}
    bool Take(const void* bytes, size_t count) override {
        sum.Add(bytes, count);
        return true;
    }

private:
    Checksum& sum;
};

} // namespace

bool PassOn(Platform::File& file, ByteSink& out) {
    auto* const piece = Heap::AllocateArray<uint8_t>(PieceBytes);
    bool isPassed = piece != nullptr;
    for (size_t read = PieceBytes; isPassed && read == PieceBytes;)
        isPassed = file.Read(piece, PieceBytes, read) && (read == 0 || out.Take(piece, read));
    Heap::Free(piece);
    return isPassed;
}

bool AddUp(Platform::File& file, Checksum& sum) {
    SumSink sink(sum);
    return PassOn(file, sink);
}
