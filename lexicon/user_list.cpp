#include "lexicon/user_list.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <system_error>

namespace ostrane {
namespace {

// The compiled copy: a heading, the file's key and size, the counts, then
// sections of bytes each led by its length (little-endian integers).
constexpr std::string_view kMagic = "Ostrane liste compilee\n";
constexpr uint32_t kVersion = 1;

class Writer {
 public:
  void Bytes(std::string_view s) { out_.append(s); }
  template <class T>
  void Number(T value) {
    char raw[sizeof(T)];
    std::memcpy(raw, &value, sizeof(T));
    out_.append(raw, sizeof(T));
  }
  void Section(std::string_view s) {
    Number<uint64_t>(s.size());
    Bytes(s);
  }
  const std::string& Text() const { return out_; }

 private:
  std::string out_;
};

class Reader {
 public:
  explicit Reader(std::string_view in) : in_(in) {}
  bool Bytes(size_t n, std::string_view& out) {
    if (in_.size() - at_ < n) return false;
    out = in_.substr(at_, n);
    at_ += n;
    return true;
  }
  template <class T>
  bool Number(T& value) {
    std::string_view raw;
    if (!Bytes(sizeof(T), raw)) return false;
    std::memcpy(&value, raw.data(), sizeof(T));
    return true;
  }
  bool Section(std::string_view& out) {
    uint64_t n = 0;
    return Number(n) && n <= in_.size() && Bytes(size_t(n), out);
  }
  bool AtEnd() const { return at_ == in_.size(); }

 private:
  std::string_view in_;
  size_t at_ = 0;
};

bool ReadWhole(const std::filesystem::path& file, std::string& bytes) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return false;
  in.seekg(0, std::ios::end);
  const std::streamoff size = in.tellg();
  if (size < 0) return false;
  in.seekg(0);
  bytes.resize(size_t(size));
  in.read(bytes.data(), size);
  return bool(in);
}

}  // namespace

std::filesystem::path UserCacheFolder() {
  const char* cache = std::getenv("XDG_CACHE_HOME");
  if (cache && *cache == '/') return std::filesystem::path(cache) / "ostrane";
  const char* home = std::getenv("HOME");
  if (home && *home) return std::filesystem::path(home) / ".cache" / "ostrane";
  return std::filesystem::temp_directory_path() / "ostrane-cache";
}

std::filesystem::path CompiledWordList::CopyFile(const std::filesystem::path& cacheFolder, uint64_t key) {
  char name[32];
  std::snprintf(name, sizeof name, "%016llx.liste", static_cast<unsigned long long>(key));
  return cacheFolder / "listes" / name;
}

std::optional<CompiledWordList> CompiledWordList::Open(const std::filesystem::path& file,
                                                       const std::filesystem::path& cacheFolder, std::string& error) {
  // The file is read whole in any case: its bytes are the copy's key.
  const std::string name = file.filename().string();
  std::error_code code;
  const auto status = std::filesystem::status(file, code);
  if (!std::filesystem::exists(status)) {
    error = "Le fichier « " + file.string() + " » n'existe pas.";
    return std::nullopt;
  }
  if (std::filesystem::is_directory(status)) {
    error = "« " + file.string() + " » est un dossier, pas une liste de mots.";
    return std::nullopt;
  }
  const uintmax_t size = std::filesystem::file_size(file, code);
  if (!code && size > kLargestWordFile) {
    error = "Le fichier « " + name + " » est trop grand (plus de 50 Mo) pour être une liste de mots.";
    return std::nullopt;
  }
  std::string bytes;
  if (code || !ReadWhole(file, bytes)) {
    error = "Le fichier « " + name + " » ne peut pas être lu.";
    return std::nullopt;
  }
  CompiledWordList list;
  list.info_.file = std::filesystem::absolute(file, code);
  list.info_.key = ContentKey(bytes);
  const std::filesystem::path copy = CopyFile(cacheFolder, list.info_.key);
  if (list.ReadCopy(copy, list.info_.key, bytes.size())) return list;

  std::optional<WordFile> words = ParseWordFile(bytes, name, error);
  if (!words) return std::nullopt;
  auto graph = std::make_shared<WordGraph>();
  graph->Build(words->Alphabetical());
  list.graph_ = std::move(graph);
  list.dico_ = std::move(words->shortWords);
  list.longs_ = std::move(words->longWords);
  list.info_.words = words->words;
  list.info_.skipped = words->skipped;
  list.info_.duplicates = words->duplicates;
  list.info_.encoding = words->encoding;
  list.WriteCopy(copy, bytes.size());
  return list;
}

bool CompiledWordList::ReadCopy(const std::filesystem::path& copy, uint64_t key, uint64_t sourceSize) {
  std::string bytes;
  if (!ReadWhole(copy, bytes)) return false;
  Reader in(bytes);
  std::string_view magic, encoding, dico, graph;
  std::array<std::string_view, 6> longs;
  uint32_t version = 0;
  uint64_t storedKey = 0, storedSize = 0;
  if (!in.Bytes(kMagic.size(), magic) || magic != kMagic || !in.Number(version) || version != kVersion ||
      !in.Number(storedKey) || storedKey != key || !in.Number(storedSize) || storedSize != sourceSize ||
      !in.Number(info_.words) || !in.Number(info_.skipped) || !in.Number(info_.duplicates) ||
      !in.Section(encoding) || !in.Section(dico))
    return false;
  for (std::string_view& l : longs)
    if (!in.Section(l)) return false;
  if (!in.Section(graph) || !in.AtEnd()) return false;
  auto made = std::make_shared<WordGraph>();
  if (!made->FromBytes(graph) || int64_t(made->WordCount()) != info_.words) return false;
  graph_ = std::move(made);
  info_.encoding = std::string(encoding);
  dico_ = std::string(dico);
  for (size_t i = 0; i < longs.size(); ++i) longs_[i] = std::string(longs[i]);
  info_.fromCache = true;
  return true;
}

void CompiledWordList::WriteCopy(const std::filesystem::path& copy, uint64_t sourceSize) const {
  Writer out;
  out.Bytes(kMagic);
  out.Number(kVersion);
  out.Number(info_.key);
  out.Number(sourceSize);
  out.Number(info_.words);
  out.Number(info_.skipped);
  out.Number(info_.duplicates);
  out.Section(info_.encoding);
  out.Section(dico_);
  for (const std::string& l : longs_) out.Section(l);
  out.Section(graph_->ToBytes());
  // Whole or not at all: a temporary file renamed over the copy.
  std::error_code code;
  std::filesystem::create_directories(copy.parent_path(), code);
  std::filesystem::path temporary = copy;
  temporary += "." + std::to_string(getpid()) + ".tmp";
  {
    std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
    if (!file) return;
    file.write(out.Text().data(), std::streamsize(out.Text().size()));
    file.flush();
    if (!file) {
      file.close();
      std::filesystem::remove(temporary, code);
      return;
    }
  }
  std::filesystem::rename(temporary, copy, code);
  if (code) std::filesystem::remove(temporary, code);
}

std::string_view CompiledWordList::Text(std::string_view name) const {
  if (name == Lexicon::kDico) return dico_;
  for (int length = 10; length <= 15; ++length)
    if (name == Lexicon::LongListName(length)) return longs_[size_t(length - 10)];
  return {};
}

void CompiledWordList::LoadInto(Lexicon& lexicon, const Lexicon::Reader& embedded) const {
  lexicon.LoadAll([&](std::string_view name) {
    if (name == Lexicon::kDefinitions) return embedded(name);
    return std::string(Text(name));
  });
  lexicon.SetGraph(graph_);
}

}  // namespace ostrane
