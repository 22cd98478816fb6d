#pragma once

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <cstddef>
#include <cstdint>

/// What a pass-through has answered since it was mounted; stands in a file that it and who reads it map.
struct Zaehlerstand {
  enum Art : std::size_t { Attribute, Oeffnen, Lesen, Auflisten, Arten };
  std::atomic<std::uint64_t> anfragen[Arten];
  std::atomic<std::uint64_t> bytes;  ///< of files, read
};
static_assert(std::atomic<std::uint64_t>::is_always_lock_free, "another process counts");

namespace zaehlerstand {

/// Maps the file, made and zero where it is missing; null where that fails. Stays until the process ends.
inline Zaehlerstand* bilde_ab(const char* datei) {
  const int deskriptor = ::open(datei, O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (deskriptor < 0) return nullptr;
  void* ort = MAP_FAILED;
  if (::ftruncate(deskriptor, sizeof(Zaehlerstand)) == 0)
    ort = ::mmap(nullptr, sizeof(Zaehlerstand), PROT_READ | PROT_WRITE, MAP_SHARED, deskriptor, 0);
  ::close(deskriptor);
  return ort == MAP_FAILED ? nullptr : static_cast<Zaehlerstand*>(ort);
}

}  // namespace zaehlerstand
