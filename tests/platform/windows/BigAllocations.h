#pragma once

#include <cstddef>
#include <set>

#include "platform/windows/com/com.h"

namespace intake {

/// Counts what OLE automation has allocated and not freed, BSTRs above all, from 64 KB on: smaller
/// ones it keeps for later use. For tests that look for leaks, with texts of such a size. There is
/// one, which lives as long as the process.
class BigAllocations final : public IMallocSpy {
public:
    /// A text of that size.
    static constexpr size_t CHARACTERS = 40000;

    static size_t living();

    STDMETHODIMP QueryInterface(REFIID identity, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }

    STDMETHODIMP_(SIZE_T) PreAlloc(SIZE_T size) override { return size_ = size; }
    STDMETHODIMP_(void*) PostAlloc(void* block) override;
    STDMETHODIMP_(void*) PreFree(void* block, BOOL spied) override;
    STDMETHODIMP_(void) PostFree(BOOL) override {}
    STDMETHODIMP_(SIZE_T) PreRealloc(void* block, SIZE_T size, void** asked, BOOL spied) override;
    STDMETHODIMP_(void*) PostRealloc(void* block, BOOL) override { return PostAlloc(block); }
    STDMETHODIMP_(void*) PreGetSize(void* block, BOOL) override { return block; }
    STDMETHODIMP_(SIZE_T) PostGetSize(SIZE_T size, BOOL) override { return size; }
    STDMETHODIMP_(void*) PreDidAlloc(void* block, BOOL) override { return block; }
    STDMETHODIMP_(int) PostDidAlloc(void*, BOOL, int did) override { return did; }
    STDMETHODIMP_(void) PreHeapMinimize() override {}
    STDMETHODIMP_(void) PostHeapMinimize() override {}

private:
    SIZE_T size_ = 0;  // of the call that is under way
    std::set<void*> living_;
};

}  // namespace intake
