#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

/// A benchmark reads and writes no thumbnails of the user's: before its main begins, XDG_CACHE_HOME is a new folder
/// that ends with it. The processes that it starts share that folder.
namespace eigener_cache {

class Ordner {
 public:
  Ordner() {
    if (const char* geerbt = std::getenv(Kennzeichen)) {
      pfad_ = geerbt;
      return;
    }
    std::string muster = (std::filesystem::temp_directory_path() / "kvo_bench_XXXXXX").string();
    if (::mkdtemp(muster.data()) == nullptr) std::abort();
    pfad_ = muster;
    eigener_ = true;
    ::setenv(Kennzeichen, pfad_.c_str(), 1);
    ::setenv("XDG_CACHE_HOME", pfad_.c_str(), 1);
  }
  Ordner(const Ordner&) = delete;
  Ordner& operator=(const Ordner&) = delete;
  ~Ordner() {
    std::error_code gleichgueltig;
    if (eigener_) std::filesystem::remove_all(pfad_, gleichgueltig);
  }

  const std::string& pfad() const { return pfad_; }

 private:
  static constexpr const char* Kennzeichen = "KVO_BENCH_CACHE";
  std::string pfad_;
  bool eigener_ = false;
};

inline const Ordner Eigener;

}  // namespace eigener_cache
