// Teams of threads.
#include <atomic>
#include <thread>

#include "tests/host/random_case.h"
#include "tests/host/rejection.h"

namespace vistrel {
namespace {

using Teams = LargeFrame;

TEST_F(Teams, IsChecked) {
  vistrel_error error{};
  for (const uint32_t threads : {0u, 1u, 257u}) {
    vistrel_team* none = nullptr;
    vistrel_team_create(threads, &none, &error);
    expectError(error,
                {VISTREL_BAD_THREADS, "threads", std::to_string(threads), "2 to 256 are allowed"});
    EXPECT_EQ(none, nullptr);
  }
  vistrel_team* team = nullptr;
  ASSERT_EQ(vistrel_team_create(2, &team, nullptr), VISTREL_OK);
  ASSERT_EQ(vistrel_team_destroy(team, nullptr), VISTREL_OK);
  const Rejection gone{VISTREL_BAD_TEAM, "team", "", "there is no such team"};
  vistrel_team_destroy(team, &error);
  expectError(error, gone);
  conversion.threads = 2, conversion.team = team;
  expectError(rejection(), {VISTREL_BAD_TEAM, "conversion.team", "", "there is no such team"});
  vistrel_team_create(2, nullptr, &error);
  expectError(error, nullPointer("team"));
  vistrel_team_destroy(nullptr, &error);
  expectError(error, nullPointer("team"));
}

TEST_F(Teams, ServesOneConversionAtATime) {
  const OwnTeam team(2);
  conversion.threads = 2, conversion.team = team;
  std::atomic<bool> over = false;
  std::thread other([&] {
    std::vector<uint8_t> own(pixels.size());
    const vistrel_image ownImage{own.data(), own.size(), 0, {}};
    while (!over) vistrel_convert(&frame, &conversion, &ownImage, nullptr);
  });
  vistrel_error error{};
  do error = rejection();
  while (error.status == VISTREL_OK);
  over = true;
  other.join();
  expectError(error, {VISTREL_BAD_TEAM, "conversion.team", "", "another conversion runs on it"});
  EXPECT_EQ(rejection().status, VISTREL_OK);
}

}  // namespace
}  // namespace vistrel
