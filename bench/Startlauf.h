#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "bench/Messung.h"

namespace messung {

/// Runs a program until it says on file descriptor 3 that it has painted; gives its words.
inline std::string starte(const std::vector<std::string>& aufruf) {
  int rohr[2];
  verlange(::pipe2(rohr, O_CLOEXEC) == 0, "pipe");
  posix_spawn_file_actions_t dateien;
  posix_spawn_file_actions_init(&dateien);
  posix_spawn_file_actions_adddup2(&dateien, rohr[1], 3);
  std::vector<char*> argumente;
  for (const std::string& wort : aufruf) argumente.push_back(const_cast<char*>(wort.c_str()));
  argumente.push_back(nullptr);
  pid_t prozess = 0;
  verlange(::posix_spawn(&prozess, argumente[0], &dateien, nullptr, argumente.data(), environ) == 0, argumente[0]);
  posix_spawn_file_actions_destroy(&dateien);
  ::close(rohr[1]);
  char worte[64];
  const ssize_t anzahl = ::read(rohr[0], worte, sizeof worte);
  verlange(anzahl > 0, "the window was not painted");
  ::close(rohr[0]);
  int ausgang = 0;
  ::waitpid(prozess, &ausgang, 0);
  return {worte, static_cast<std::size_t>(anzahl)};
}

}  // namespace messung
