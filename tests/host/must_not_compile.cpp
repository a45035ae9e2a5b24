// Code that would read memory that has ended, or more than there is. CASE 0 compiles, no other
// does.
#include <array>
#include <vector>

#include "vistrel/vistrel.hpp"

using namespace vistrel;

struct Owner {
  const uint8_t* data() const { return bytes; }
  size_t size() const { return 4; }
  uint8_t bytes[4];
};

void use(const vistrel_frame& frame, const vistrel_conversion& conversion,
         const vistrel_packed& packed, const uint8_t* pointer) {
  vistrel_conversion changed = conversion;
  const Team team;
  const auto runner = [](uint32_t, auto) {};
  const std::vector<uint16_t> table;
  const Image image;
  using Four = uint8_t[4];
  const uint8_t array[4] = {};
#if CASE == 0
  const auto result = tryConvert(frame, conversion);
  static_cast<void>(result->pixels);
  frameOf(array, 2, 2, VISTREL_RGGB);
  frameOf({pointer, 4}, 2, 2, VISTREL_RGGB);
  packedOf(array, 4, 1, VISTREL_PACKING_BYTES, 8);
  setTable(changed, table);
  setTeam(changed, team);
  setRunner(changed, 2, runner);
  pictureOf(image, VISTREL_GRAY8);
  const std::vector<vistrel_point> hot;
  const vistrel_calibration calibration = calibrationOf(table, {}, hot);
  setCalibration(changed, calibration);
  const vistrel_finish finish = finishOf(table);
  setFinish(changed, finish);
#elif CASE == 1
  static_cast<void>(tryConvert(frame, conversion)->pixels);
#elif CASE == 2
  tryUnpack(packed, VISTREL_RGGB)->get();
#elif CASE == 3
  packedOf({{1, 2, 3, 4}}, 4, 1, VISTREL_PACKING_BYTES, 8);
#elif CASE == 4
  packedOf(Four{1, 2, 3, 4}, 4, 1, VISTREL_PACKING_BYTES, 8);
#elif CASE == 5
  frameOf(std::array<const uint8_t, 4>{}, 2, 2, VISTREL_RGGB);
#elif CASE == 6
  frameOf(Owner{}, 2, 2, VISTREL_RGGB);
#elif CASE == 7
  frameOf(pointer, 2, 2, VISTREL_RGGB);
#elif CASE == 8
  using ConstFour = const uint8_t[4];
  packedOf(ConstFour{1, 2, 3, 4}, 4, 1, VISTREL_PACKING_BYTES, 8);
#elif CASE == 9
  unpack(packed, VISTREL_RGGB).get();
#elif CASE == 10
  setTable(changed, std::vector<uint16_t>(1024));
#elif CASE == 11
  setTeam(changed, Team::create(2));
#elif CASE == 12
  setRunner(changed, 2, [](uint32_t, auto) {});
#elif CASE == 13
  pictureOf(convert(frame, conversion), VISTREL_BGR24);
#elif CASE == 14
  Image begun;
  static_cast<void>(Stream::acquire().begin(frame, conversion, begun));
#elif CASE == 15
  Stream stream;
  static_cast<void>(stream.begin(frame, conversion, Image()));
#elif CASE == 16
  finishOf(makeTransfer(VISTREL_TRANSFER_SRGB, 0));
#elif CASE == 17
  setFinish(changed, finishOf(table));
#elif CASE == 18
  calibrationOf(table, measureFlat(frame, conversion), {});
#elif CASE == 19
  setCalibration(changed, calibrationOf(table, table, {}));
#endif
}
