// The XDG rules, over made-up variables and texts.
#include "platform/xdg.h"

#include <gtest/gtest.h>

#include <sstream>

namespace vistrel::core::test {
namespace {

const XdgVariables kHome = {"/home/ana", "", ""};

std::string documents(const std::string& userDirs, const XdgVariables& variables = kHome) {
  std::istringstream text(userDirs);
  return xdgDocumentsFolder(variables, text);
}

TEST(Xdg, TakesTheFoldersOfTheVariables) {
  const XdgVariables variables = {"/home/ana", "/etc/ana", "/data/ana"};
  EXPECT_EQ(xdgDataFolder(variables), "/data/ana");
  EXPECT_EQ(xdgUserDirsFile(variables), "/etc/ana/user-dirs.dirs");
}

TEST(Xdg, HasItsFoldersInTheHomeByDefault) {
  EXPECT_EQ(xdgDataFolder(kHome), "/home/ana/.local/share");
  EXPECT_EQ(xdgUserDirsFile(kHome), "/home/ana/.config/user-dirs.dirs");
  EXPECT_EQ(documents(""), "/home/ana/Documents");
}

TEST(Xdg, TakesARelativeVariableForUnset) {
  const XdgVariables variables = {"/home/ana", "etc", "./data"};
  EXPECT_EQ(xdgDataFolder(variables), "/home/ana/.local/share");
  EXPECT_EQ(xdgUserDirsFile(variables), "/home/ana/.config/user-dirs.dirs");
}

TEST(Xdg, NamesNothingWithoutAHome) {
  for (const char* home : {"", "home/ana"}) {
    const XdgVariables variables = {home, "", ""};
    EXPECT_EQ(xdgDataFolder(variables), "");
    EXPECT_EQ(xdgUserDirsFile(variables), "");
    EXPECT_EQ(documents("", variables), "");
    EXPECT_EQ(documents("XDG_DOCUMENTS_DIR=\"$HOME/Texte\"\n", variables), "");
  }
}

TEST(Xdg, NeedsNoHomeForAnAbsoluteFolder) {
  EXPECT_EQ(xdgDataFolder({"", "", "/data"}), "/data");
  EXPECT_EQ(xdgUserDirsFile({"", "/etc", ""}), "/etc/user-dirs.dirs");
  EXPECT_EQ(documents("XDG_DOCUMENTS_DIR=\"/texts\"\n", {}), "/texts");
}

TEST(XdgDocuments, AreFoundAmongTheOtherFolders) {
  EXPECT_EQ(documents("# made by a program\n\nXDG_DESKTOP_DIR=\"$HOME/Tisch\"\n"
                      "XDG_DOCUMENTS_DIR=\"$HOME/Texte\"\nXDG_MUSIC_DIR=\"$HOME/Musik\"\n"),
            "/home/ana/Texte");
}

TEST(XdgDocuments, MayLieOutsideTheHome) {
  EXPECT_EQ(documents("XDG_DOCUMENTS_DIR=\"/srv/texts\"\n"), "/srv/texts");
}

TEST(XdgDocuments, MayBeTheHomeItself) {
  EXPECT_EQ(documents("XDG_DOCUMENTS_DIR=\"$HOME/\"\n"), "/home/ana");
  EXPECT_EQ(documents("XDG_DOCUMENTS_DIR=\"$HOME/Texte///\"\n"), "/home/ana/Texte");
  EXPECT_EQ(documents("XDG_DOCUMENTS_DIR=\"/\"\n"), "/");
}

TEST(XdgDocuments, AreThoseOfTheLastLine) {
  EXPECT_EQ(documents("XDG_DOCUMENTS_DIR=\"/a\"\nXDG_DOCUMENTS_DIR=\"/b\""), "/b");
  EXPECT_EQ(documents("XDG_DOCUMENTS_DIR=\"/a\"\nXDG_DOCUMENTS_DIR=\"b\"\n"), "/a");
}

TEST(XdgDocuments, MayHaveBlanksRoundTheirName) {
  EXPECT_EQ(documents(" \tXDG_DOCUMENTS_DIR \t=  \"/a b\"  # mine\n"), "/a b");
}

TEST(XdgDocuments, KeepWhatFollowsABackslash) {
  EXPECT_EQ(documents(R"(XDG_DOCUMENTS_DIR="/a\"b\\c\$d"x")"), R"(/a"b\c$d)");
  EXPECT_EQ(documents("XDG_DOCUMENTS_DIR=\"/a\\"), "/a\\");  // nothing follows
}

TEST(XdgDocuments, IgnoreWhatIsNoFolder) {
  for (const char* line : {
           "XDG_DOCUMENTS_DIR=\"Texte\"",
           "XDG_DOCUMENTS_DIR=\"$HOMETexte\"",
           "XDG_DOCUMENTS_DIR=\"$USER/Texte\"",
           "XDG_DOCUMENTS_DIR=\"\"",
           "XDG_DOCUMENTS_DIR=\"",
           "XDG_DOCUMENTS_DIR=/Texte",
           "XDG_DOCUMENTS_DIR",
           "XDG_DOCUMENTS_DIRS=\"/Texte\"",
           "DOCUMENTS=\"/Texte\"",
           "#XDG_DOCUMENTS_DIR=\"/Texte\"",
           "XDG_DOWNLOAD_DIR=\"/Texte\"",
           " ",
       })
    EXPECT_EQ(documents(line), "/home/ana/Documents") << line;
}

}  // namespace
}  // namespace vistrel::core::test
