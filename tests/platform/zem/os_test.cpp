#include <ZemOS.h>

#include <gtest/gtest.h>

#include <limits>
#include <new>

using Zem::OS;

namespace {

/// A block of virtual memory that a test cannot leak.
struct Block
{
    explicit Block(unsigned int size_)
        : memory(static_cast<unsigned char *>(OS::allocVirtualMemory(size_))), size(size_)
    {
    }
    ~Block() { OS::freeVirtualMemory(memory, size); }
    Block(Block const &) = delete;
    Block &operator=(Block const &) = delete;

    void resize(unsigned int newSize)
    {
        memory = static_cast<unsigned char *>(OS::reallocVirtualMemory(memory, size, newSize));
        size = newSize;
    }

    unsigned char *memory;
    unsigned int size;
};

} // namespace

TEST(VirtualMemory, isZeroedAndWritable)
{
    Block block(100000);
    EXPECT_EQ(std::count(block.memory, block.memory + block.size, 0), 100000);
    std::fill(block.memory, block.memory + block.size, static_cast<unsigned char>(7));
    EXPECT_EQ(block.memory[99999], 7);
}

TEST(VirtualMemory, beginsOnAPage)
{
    Block block(1);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block.memory) % OS::getpagesize(), 0u);
}

TEST(VirtualMemory, keepsItsContentsWhenItGrowsAndShrinks)
{
    Block block(10);
    block.memory[9] = 42;
    block.resize(10'000'000);
    EXPECT_EQ(block.memory[9], 42);
    block.memory[9'999'999] = 1;
    block.resize(10);
    EXPECT_EQ(block.memory[9], 42);
}

TEST(VirtualMemory, ofNoBytesIsStillMemory)
{
    Block block(0);
    ASSERT_NE(block.memory, nullptr);
    block.resize(5);
    block.memory[4] = 3;
    EXPECT_EQ(block.memory[4], 3);
}

TEST(VirtualMemory, isAllocatedWhenThereWasNone)
{
    void *memory = OS::reallocVirtualMemory(nullptr, 0, 100);
    EXPECT_NE(memory, nullptr);
    OS::freeVirtualMemory(memory, 100);
}

TEST(VirtualMemory, reportsAFailedChangeAndIsLeftAlone)
{
    alignas(16) unsigned char notMapped[16] = {5};
    EXPECT_THROW(OS::reallocVirtualMemory(notMapped + 1, 16, 100), std::bad_alloc);
    EXPECT_EQ(notMapped[0], 5);
}

TEST(VirtualMemory, ignoresThatNothingIsFreed)
{
    EXPECT_NO_THROW(OS::freeVirtualMemory(nullptr, 100));
}

TEST(OperatingSystem, showsFileNamesWithItsOwnSeparators)
{
    EXPECT_EQ(OS::convertSeparators("a/b/c.fig"), "a/b/c.fig");
}

TEST(OperatingSystem, takesBackUnusedMemory)
{
    EXPECT_NO_THROW(Zem::NewHandler::freeMemory());
}
