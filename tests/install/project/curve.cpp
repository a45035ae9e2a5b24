// A C++ user: functions exported under overloaded names.
#include <cstdio>

#include <vistrel/solvers.h>
#include <vistrel/tone_curves.h>
#include <vistrel/vistrel.h>

int main() {
  int failures = 0;

  unsigned short line[1024];
  UnityLut(10, 8, line);
  for (int i = 0; i < 1024; ++i) failures += line[i] != i / 4;

  double diagonal[16] = {2, 0, 0, 0, 0, 4, 0, 0, 0, 0, 8, 0, 0, 0, 0, 16}, inverse[16];
  failures += Invert4x4Matrix(diagonal, inverse) != 1;
  for (int i = 0; i < 4; ++i) failures += inverse[5 * i] != 1 / diagonal[5 * i];

  ImgLoadDriver();
  ImgUnloadDriver();
  if (failures) std::printf("%d wrong values\n", failures);
  return failures != 0;
}
