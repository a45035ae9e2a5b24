// Streams that a caller has acquired.
#include <gmock/gmock.h>

#include <setjmp.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <future>
#include <set>
#include <thread>

#include "tests/host/frames.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {
using ::testing::Each;

constexpr size_t kStreams = VISTREL_MAX_STREAMS;
const Rejection kNotAcquired{VISTREL_BAD_STREAM, "stream", "", "it is not acquired"};

vistrel_stream* acquire(uint32_t wait = VISTREL_WAIT) {
  vistrel_stream* stream = nullptr;
  vistrel_stream_acquire(wait, &stream, nullptr);
  return stream;
}

struct AcquiredStreams : ::testing::Test {
  std::vector<uint8_t> samples = std::vector<uint8_t>(8 * 6, 120);
  vistrel_frame frame = frameOf(samples, 8, 6, VISTREL_RGGB);
  vistrel_conversion conversion = defaultConversion(frame);
  std::vector<uint8_t> pixels = std::vector<uint8_t>(3 * 8 * 6, 77);
  vistrel_image image{pixels.data(), pixels.size(), 0, {}};
  vistrel_error error{};

  int32_t convertOn(vistrel_stream* stream) {
    return vistrel_stream_convert(stream, &frame, &conversion, &image, &error);
  }
};

TEST_F(AcquiredStreams, Convert) {
  vistrel_stream* const stream = acquire();
  ASSERT_EQ(convertOn(stream), VISTREL_OK) << error.text;
  EXPECT_THAT(pixels, Each(120));
  ASSERT_EQ(convertOn(stream), VISTREL_OK) << "any number of times";
  EXPECT_EQ(vistrel_stream_release(stream, &error), VISTREL_OK);
}

TEST_F(AcquiredStreams, MayBeTrimmed) {
  vistrel_stream* const stream = acquire();
  ASSERT_EQ(convertOn(stream), VISTREL_OK) << error.text;
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(vistrel_stream_trim(stream, &error), VISTREL_OK);
    vistrel_trim();
  }
  std::fill(pixels.begin(), pixels.end(), uint8_t{77});
  EXPECT_EQ(convertOn(stream), VISTREL_OK) << error.text;
  EXPECT_THAT(pixels, Each(120));
  EXPECT_EQ(vistrel_stream_release(stream, nullptr), VISTREL_OK);
  EXPECT_EQ(vistrel_stream_trim(stream, &error), VISTREL_BAD_STREAM);
  expectError(error, kNotAcquired);
  EXPECT_EQ(vistrel_stream_trim(nullptr, &error), VISTREL_NULL_POINTER);
}

TEST_F(AcquiredStreams, AreAHundredAndTwentyEight) {
  std::vector<vistrel_stream*> streams(kStreams);
  for (auto& stream : streams) ASSERT_NE(stream = acquire(VISTREL_NO_WAIT), nullptr);
  vistrel_stream* another = nullptr;
  EXPECT_EQ(vistrel_stream_acquire(VISTREL_NO_WAIT, &another, &error), VISTREL_NO_STREAM);
  expectError(error, {VISTREL_NO_STREAM, "", "", "all 128 streams are in use"});
  EXPECT_EQ(another, nullptr);
  EXPECT_EQ(convertOn(streams[127]), VISTREL_OK);
  auto waiting = std::async(std::launch::async, [] { return acquire(VISTREL_WAIT); });
  EXPECT_EQ(waiting.wait_for(std::chrono::milliseconds(30)), std::future_status::timeout);
  EXPECT_EQ(vistrel_stream_release(streams[5], nullptr), VISTREL_OK);
  streams[5] = waiting.get();
  for (auto* stream : streams) EXPECT_EQ(vistrel_stream_release(stream, nullptr), VISTREL_OK);
}

TEST_F(AcquiredStreams, AreRejectedUnlessAcquired) {
  vistrel_stream* const stream = acquire();
  vistrel_stream_release(stream, nullptr);
  EXPECT_EQ(convertOn(stream), VISTREL_BAD_STREAM);
  expectError(error, kNotAcquired);
  EXPECT_EQ(vistrel_stream_release(stream, &error), VISTREL_BAD_STREAM);
  auto* const foreign = reinterpret_cast<vistrel_stream*>(pixels.data());
  EXPECT_EQ(convertOn(foreign), VISTREL_BAD_STREAM);
  auto* const inside = reinterpret_cast<vistrel_stream*>(reinterpret_cast<char*>(stream) + 1);
  EXPECT_EQ(vistrel_stream_release(inside, &error), VISTREL_BAD_STREAM);
  EXPECT_EQ(convertOn(nullptr), VISTREL_NULL_POINTER);
  expectError(error, nullPointer("stream"));
  EXPECT_EQ(vistrel_stream_release(nullptr, &error), VISTREL_NULL_POINTER);
  EXPECT_EQ(vistrel_stream_acquire(VISTREL_WAIT, nullptr, &error), VISTREL_NULL_POINTER);
  vistrel_stream* none = nullptr;
  EXPECT_EQ(vistrel_stream_acquire(2, &none, &error), VISTREL_BAD_WAIT);
  expectError(error, {VISTREL_BAD_WAIT, "wait", "2", "0 (wait) and 1 (do not wait) are allowed"});
  EXPECT_THAT(pixels, Each(77));
}

TEST_F(AcquiredStreams, AreNotNeededByACallWithoutOne) {
  std::vector<vistrel_stream*> streams(kStreams);
  for (auto& stream : streams) ASSERT_NE(stream = acquire(VISTREL_NO_WAIT), nullptr);
  EXPECT_EQ(vistrel_convert(&frame, &conversion, &image, &error), VISTREL_OK);
  EXPECT_THAT(pixels, Each(120));
  for (auto* stream : streams) EXPECT_EQ(vistrel_stream_release(stream, nullptr), VISTREL_OK);
}

// A thread that is cancelled while it waits gets its stream; the process goes on.
TEST_F(AcquiredStreams, AreWaitedForByACancelledThread) {
  std::vector<vistrel_stream*> streams(kStreams);
  for (auto& stream : streams) ASSERT_NE(stream = acquire(VISTREL_NO_WAIT), nullptr);
  std::promise<pthread_t> begun;
  std::promise<vistrel_stream*> acquired;
  std::thread waiting([&] {
    begun.set_value(pthread_self());
    acquired.set_value(acquire(VISTREL_WAIT));
    int before = -1;
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before);
    EXPECT_EQ(before, PTHREAD_CANCEL_ENABLE);
  });
  const pthread_t thread = begun.get_future().get();
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  pthread_cancel(thread);
  vistrel_stream_release(streams[3], nullptr);
  streams[3] = acquired.get_future().get();
  waiting.join();
  for (auto* stream : streams) EXPECT_EQ(vistrel_stream_release(stream, nullptr), VISTREL_OK);
}

sigjmp_buf g_beforeTheFault;

// Converts from mapped memory that a shorter file has left, and jumps out.
void leaveByAFault(vistrel_stream* stream, vistrel_frame frame, const vistrel_image& image) {
  std::FILE* const file = std::tmpfile();
  if (!file || ftruncate(fileno(file), ptrdiff_t(frame.size)) != 0) _exit(2);
  frame.samples = mmap(nullptr, frame.size, PROT_READ, MAP_SHARED, fileno(file), 0);
  if (ftruncate(fileno(file), 0) != 0) _exit(3);
  signal(SIGBUS, [](int) { siglongjmp(g_beforeTheFault, 1); });
  const vistrel_conversion conversion = defaultConversion(frame);
  if (sigsetjmp(g_beforeTheFault, 1) == 0) {
    vistrel_stream_convert(stream, &frame, &conversion, &image, nullptr);
    _exit(4);
  }
}

// In a process of its own, since the stream is lost. All others go on.
TEST_F(AcquiredStreams, AreLostIfAHandlerJumpsOut) {
  const pid_t child = fork();
  if (child == 0) {
    vistrel_stream* const lost = acquire();
    leaveByAFault(lost, frame, image);
    EXPECT_EQ(convertOn(lost), VISTREL_BUSY_STREAM);
    EXPECT_EQ(vistrel_stream_release(lost, nullptr), VISTREL_BUSY_STREAM);
    EXPECT_EQ(vistrel_convert(&frame, &conversion, &image, nullptr), VISTREL_OK);
    for (size_t i = 1; i < kStreams; ++i)
      EXPECT_EQ(convertOn(acquire(VISTREL_NO_WAIT)), VISTREL_OK);
    EXPECT_EQ(acquire(VISTREL_NO_WAIT), nullptr);
    _exit(HasFailure());
  }
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

// The stream that was released last is acquired next, under another handle.
TEST_F(AcquiredStreams, AreRejectedFromFormerOwners) {
  vistrel_stream* const former = acquire();
  EXPECT_EQ(vistrel_stream_release(former, nullptr), VISTREL_OK);
  vistrel_stream* const owner = acquire();
  EXPECT_NE(owner, former);
  EXPECT_EQ(convertOn(former), VISTREL_BAD_STREAM);
  expectError(error, kNotAcquired);
  EXPECT_THAT(pixels, Each(77));
  EXPECT_EQ(vistrel_stream_release(former, &error), VISTREL_BAD_STREAM);
  EXPECT_EQ(convertOn(owner), VISTREL_OK) << error.text;
  EXPECT_THAT(pixels, Each(120));
  EXPECT_EQ(vistrel_stream_release(owner, &error), VISTREL_OK);
}

TEST_F(AcquiredStreams, HaveHandlesThatAreUsedOnce) {
  std::set<vistrel_stream*> handles;
  for (int i = 0; i < 1000; ++i) {
    vistrel_stream* const stream = acquire();
    EXPECT_NE(stream, nullptr);
    handles.insert(stream);
    vistrel_stream_release(stream, nullptr);
  }
  EXPECT_EQ(handles.size(), 1000u);
}

// Two threads convert on one stream until one of them is rejected.
TEST_F(AcquiredStreams, ServeOneThreadAtATime) {
  const std::vector<uint8_t> large(300 * 300, 50);
  const vistrel_frame slow = frameOf(large, 300, 300, VISTREL_RGGB);
  std::vector<uint8_t> result(3 * large.size());
  const vistrel_image to{result.data(), result.size(), 0, {}};
  vistrel_stream* const stream = acquire();
  std::atomic<bool> over = false;
  vistrel_error workers{};
  std::thread worker([&] {
    while (!over && !vistrel_stream_convert(stream, &slow, &conversion, &to, &workers)) {
    }
    over = true;
  });
  while (!over && !convertOn(stream)) {
  }
  over = true;
  worker.join();
  const vistrel_error& rejected = error.status ? error : workers;
  expectError(rejected, {VISTREL_BUSY_STREAM, "stream", "", "a conversion is running on it"});
  EXPECT_EQ(convertOn(stream), VISTREL_OK);
  EXPECT_EQ(vistrel_stream_release(stream, nullptr), VISTREL_OK);
}

// Sixteen threads acquire all the streams between them, again and again.
TEST_F(AcquiredStreams, PassFromThreadToThread) {
  std::atomic<int> wrong = 0;
  std::vector<std::thread> threads;
  for (uint32_t t = 0; t < 16; ++t)
    threads.emplace_back([&wrong, t] {
      for (uint32_t round = 0; round < 4; ++round) {
        std::vector<vistrel_stream*> streams(kStreams / 16);
        for (auto& stream : streams) stream = acquire();
        for (uint32_t i = 0; i < streams.size(); ++i) {
          const auto colour = static_cast<uint8_t>(16 * t + 4 * round + i % 4);
          const uint32_t width = 6 + (i + t) % 9, height = 5 + (round + t) % 7;
          const std::vector<uint8_t> in(width * height, colour);
          std::vector<uint8_t> out(3 * in.size());
          const vistrel_frame f = frameOf(in, width, height, i % 4);
          const vistrel_conversion c = defaultConversion(f);
          const vistrel_image to{out.data(), out.size(), 0, {}};
          wrong += vistrel_stream_convert(streams[i], &f, &c, &to, nullptr) != VISTREL_OK;
          wrong += out != std::vector<uint8_t>(out.size(), colour);
        }
        for (auto* stream : streams) wrong += vistrel_stream_release(stream, nullptr);
      }
    });
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace vistrel
