// vistrel_manual FOLDER DATE: writes the program's man pages and completions to FOLDER.
#include <CLI/CLI.hpp>
#include <cstdio>

#include "apps/program.h"
#include "apps/tools/manual/description.h"

using namespace vistrel::app;

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("vistrel_manual FOLDER DATE\n", stderr);
    return 2;
  }
  CLI::App program;
  int status = 0;
  describeProgram(program, status);
  const ProgramText text = textOf(program, argv[2]);
  writeManPages(text, argv[1]);
  writeBash(text, argv[1]);
  writeZsh(text, argv[1]);
  writeFish(text, argv[1]);
}
