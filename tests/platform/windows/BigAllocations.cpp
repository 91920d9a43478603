#include "tests/platform/windows/BigAllocations.h"

#include <stdexcept>

namespace intake {

namespace {

constexpr size_t BIG = 65536;

BigAllocations& registered() {
    static BigAllocations& spy = *new BigAllocations;
    static const HRESULT result = CoRegisterMallocSpy(&spy);
    if (FAILED(result)) {
        throw std::runtime_error("The system's allocations cannot be watched");
    }
    // Wine looks into its list of them whatever is freed, but has no list before the first.
    CoTaskMemFree(CoTaskMemAlloc(1));
    return spy;
}

}  // namespace

size_t BigAllocations::living() {
    return registered().living_.size();
}

HRESULT BigAllocations::QueryInterface(REFIID identity, void** object) {
    const bool known = identity == IID_IUnknown || identity == IID_IMallocSpy;
    *object = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
}

void* BigAllocations::PostAlloc(void* block) {
    if (block != nullptr && size_ >= BIG) {
        living_.insert(block);
    }
    return block;
}

void* BigAllocations::PreFree(void* block, BOOL) {
    living_.erase(block);
    return block;
}

SIZE_T BigAllocations::PreRealloc(void* block, SIZE_T size, void** asked, BOOL) {
    living_.erase(block);
    *asked = block;
    return size_ = size;
}

}  // namespace intake
