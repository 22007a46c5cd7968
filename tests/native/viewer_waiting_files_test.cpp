#include "viewer/waiting_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <new>
#include <set>
#include <string>
#include <thread>

#include "tests/support/hanging_files.h"
#include "viewer/block_reader.h"

namespace tallowmere {
namespace {

using Call = HangingFiles::Call;

TEST(WaitingFiles, WhatHangsIsGivenUpAndTouchesNothingThatIsGone) {
  for (const Call call : {Call::facts, Call::open, Call::read}) {
    HangingFiles disk;
    disk.add("/a", std::string(1000, 'a'), 7);
    const std::thread::id window = std::this_thread::get_id();
    bool patient = false;
    auto files = std::make_unique<WaitingFiles>(disk, [&] {
      EXPECT_EQ(std::this_thread::get_id(), window);
      return patient || disk.hanging() == 0;
    });
    disk.hang_next(call);
    {
      const auto reader = files->reader();
      auto name = std::make_unique<std::string>("a");
      auto buffer = std::make_unique<unsigned char[]>(1000);
      std::size_t got = 0;
      FileFacts facts;
      const auto use = [&] {
        files->facts("/", *name, facts);
        reader->open("/", *name);
        reader->read(buffer.get(), 1000, got);
      };
      EXPECT_THROW(use(), GivenUp);
      EXPECT_EQ(got, 0u);
      EXPECT_EQ(disk.hanging(), 1);
      EXPECT_EQ(disk.cancelled(), 1);
      patient = true;
      EXPECT_FALSE(files->facts("/", "a", facts)) << "another thread goes on";
      EXPECT_EQ(facts.modified, 7);
    }
    EXPECT_EQ(disk.closed, 0) << "closed under the call that uses it";
    files.reset();
    disk.release();
    disk.wait_for_threads(0);
    EXPECT_EQ(disk.closed, disk.opened) << "the file stays open";
  }
}

TEST(WaitingFiles, APieceIsReadWhileNobodyWaits) {
  HangingFiles disk;
  disk.add("/a", "0123456789", 7);
  auto files = std::make_unique<WaitingFiles>(disk, [] { return true; });
  const auto finished = [](WaitingFiles::PieceRead& read) {
    while (!read.done()) std::this_thread::yield();
    return !read.failed();
  };
  for (const Call call : {Call::none, Call::facts, Call::open, Call::read}) {
    disk.hang_next(call);
    auto read = files->begin_read("/", "a", 3, 4);
    if (call == Call::none) {
      ASSERT_TRUE(finished(*read));
      EXPECT_EQ(read->take_bytes(), "2345");
      EXPECT_EQ(read->facts().modified, 7);
      continue;
    }
    disk.wait_for_hang();
    EXPECT_FALSE(read->done());
    FileFacts facts;
    EXPECT_FALSE(files->facts("/", "a", facts)) << "another thread goes on";
    read.reset();
    disk.release();
    disk.wait_for_threads(1);  // the one kept for the next call
  }
  EXPECT_EQ(disk.cancelled(), 3);
  const auto behind = files->begin_read("/", "a", 8, 9);
  EXPECT_TRUE(finished(*behind));
  EXPECT_EQ(behind->take_bytes(), "789");
  EXPECT_FALSE(finished(*files->begin_read("/", "b", 1, 1)));
  files.reset();
  disk.wait_for_threads(0);
  EXPECT_EQ(disk.opened, disk.closed);
}

TEST(WaitingFiles, AThreadBringsTheBytesAndWhatGoesWrong) {
  HangingFiles disk;
  std::set<std::thread::id> threads{std::this_thread::get_id()};
  disk.on_read = [&] { threads.insert(std::this_thread::get_id()); };
  auto& file = disk.add("/a", "");
  file.facts.size = 3000000;
  file.byte_at = [](std::size_t at) { return static_cast<unsigned char>(at % 251); };
  disk.add("/locked", "x").unreadable = true;
  disk.add("/broken", "x").breaks_at = 0;
  const WaitingFiles files(disk, [] { return true; });
  BlockReader reader(files);
  EXPECT_EQ(reader.open("/", "locked")->code, 5);
  ASSERT_FALSE(reader.open("/", "a"));
  std::string bytes;
  for (const std::int64_t position : {1, 2900001, 1500001, 2999001}) {
    ASSERT_FALSE(reader.read(position, 31000, bytes));
    EXPECT_EQ(std::ssize(bytes), std::min<std::int64_t>(31000, 3000001 - position));
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      const auto at = static_cast<std::size_t>(position - 1) + i;
      ASSERT_EQ(static_cast<unsigned char>(bytes[i]), at % 251) << at;
    }
  }
  EXPECT_EQ(threads.size(), 2u) << "it is kept from call to call";
  ASSERT_FALSE(reader.open("/", "broken"));
  EXPECT_EQ(reader.read(1, 1, bytes)->code, 23);

  disk.on_facts = [] { throw std::bad_alloc(); };
  FileFacts facts;
  EXPECT_THROW(files.facts("/", "a", facts), std::bad_alloc);
  disk.on_facts = {};
  EXPECT_FALSE(files.facts("/", "a", facts));
  EXPECT_EQ(facts.size, 3000000);
}

}  // namespace
}  // namespace tallowmere
