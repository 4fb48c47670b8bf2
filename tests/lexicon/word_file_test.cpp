// The player's own word list: folding as a French player means it, the
// encodings a list comes in, the lines skipped and counted, the files that
// cannot be lists and what the player is told, the compiled copy kept in the
// cache, and the lexicon made from a list (random lists against their own
// words).
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "data/resources.h"
#include "lexicon/expressions.h"
#include "lexicon/lexicon.h"
#include "lexicon/user_list.h"
#include "lexicon/word_file.h"
#include "tests/support/test_support.h"

namespace ostrane::test {
namespace {

// Latin-1 / Windows-1252 bytes of a UTF-8 text made of those characters.
std::string ToCp1252(const std::string& utf8) { return Utf8ToCp1252(utf8); }

std::string ToUtf16(const std::string& utf8, bool bigEndian) {
  std::string out = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
  for (size_t i = 0; i < utf8.size();) {
    const auto b = uint8_t(utf8[i]);
    char32_t c = b;
    size_t n = 1;
    if (b >= 0xF0) {
      c = b & 7, n = 4;
    } else if (b >= 0xE0) {
      c = b & 15, n = 3;
    } else if (b >= 0xC0) {
      c = b & 31, n = 2;
    }
    for (size_t k = 1; k < n; ++k) c = (c << 6) | (uint8_t(utf8[i + k]) & 63);
    i += n;
    const auto unit = [&](char16_t u) {
      out += bigEndian ? char(u >> 8) : char(u & 0xFF);
      out += bigEndian ? char(u & 0xFF) : char(u >> 8);
    };
    if (c >= 0x10000) {
      unit(char16_t(0xD800 + ((c - 0x10000) >> 10)));
      unit(char16_t(0xDC00 + ((c - 0x10000) & 0x3FF)));
    } else {
      unit(char16_t(c));
    }
  }
  return out;
}

WordFile Parsed(const std::string& bytes) {
  std::string error;
  std::optional<WordFile> file = ParseWordFile(bytes, "liste.txt", error);
  EXPECT_TRUE(file.has_value()) << error;
  return file.value_or(WordFile{});
}

std::string Error(const std::string& bytes) {
  std::string error;
  EXPECT_FALSE(ParseWordFile(bytes, "liste.txt", error).has_value());
  return error;
}

TEST(WordFile, AccentsLigaturesAndCaseFoldAsAFrenchPlayerMeansThem) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"Éléphant", "ELEPHANT"}, {"cœur", "COEUR"},     {"ŒUVRE", "OEUVRE"}, {"ex æquo", ""},
      {"Æsir", "AESIR"},        {"ça", "CA"},          {"naïf", "NAIF"},    {"Noël", "NOEL"},
      {"où", "OU"},             {"maître", "MAITRE"},  {"Ÿ", ""},           {"ÿÿ", "YY"},
      {"  mot\t\r", "MOT"},     {"l'eau", ""},         {"porte-clé", ""},   {"abc1", ""},
      {"a", ""},                {"straße", ""},        {"Ωmega", ""},       {"#commentaire", ""},
      {"abcdefghijklmno", "ABCDEFGHIJKLMNO"},          {"abcdefghijklmnop", ""},
      {"cœurdelionnesq", "COEURDELIONNESQ"},            {"cœurdelionnesqu", ""}};
  for (const auto& [line, word] : cases) EXPECT_EQ(FoldWord(line), word) << line;

  std::string folded;
  EXPECT_EQ(FoldWord("", folded), Fold::Blank);
  EXPECT_EQ(FoldWord("   ", folded), Fold::Blank);
  EXPECT_EQ(FoldWord("# a comment", folded), Fold::Blank);
  EXPECT_EQ(FoldWord("é", folded), Fold::TooShort);
  EXPECT_EQ(folded, "E");  // the one letter, for a check that answers it
  EXPECT_EQ(FoldWord("anticonstitutionnellement", folded), Fold::TooLong);
  EXPECT_EQ(FoldWord("mot d'ordre", folded), Fold::NotALetter);
  EXPECT_EQ(FoldWord("\xE9t\xE9", folded), Fold::NotALetter);  // Latin-1 bytes are not UTF-8 text
}

TEST(WordFile, EveryEncodingGivesTheSameWords) {
  const std::string text =
      "# Ma liste\n"
      "Été\nétés\ncœur\nCŒURS\nmaître\n\n  naïve  \nporte-clé\nl'été\nanticonstitutionnellement\n"
      "ANTICONSTITUTIONNEL\nzoo\nZOO\nzoö\nx\n";
  const WordFile plain = Parsed(text);
  EXPECT_EQ(plain.encoding, "UTF-8");
  EXPECT_EQ(plain.shortWords, "ETE\r\nZOO\r\nETES\r\nCOEUR\r\nNAIVE\r\nCOEURS\r\nMAITRE\r\n");
  EXPECT_EQ(plain.Long(10), "");
  EXPECT_EQ(plain.Long(15), "");
  EXPECT_EQ(plain.words, 7);
  EXPECT_EQ(plain.skipped, 5);     // porte-clé, l'été, 25 and 19 letters, x
  EXPECT_EQ(plain.duplicates, 2);  // ZOO and zoö after zoo
  EXPECT_EQ(plain.byLength[3], 2);
  EXPECT_EQ(plain.byLength[5], 2);
  EXPECT_EQ(plain.byLength[6], 2);

  const std::string crlf = [&] {
    std::string out;
    for (const char c : text) out += c == '\n' ? std::string("\r\n") : std::string(1, c);
    return out;
  }();
  const std::vector<std::pair<std::string, std::string>> forms = {
      {"\xEF\xBB\xBF" + text, "UTF-8"},    {crlf, "UTF-8"},
      {ToUtf16(text, false), "UTF-16"},    {ToUtf16(crlf, true), "UTF-16"},
      {ToCp1252(text), "Windows-1252"},    {ToCp1252(crlf), "Windows-1252"}};
  for (const auto& [bytes, encoding] : forms) {
    const WordFile file = Parsed(bytes);
    SCOPED_TRACE(encoding);
    EXPECT_EQ(file.encoding, encoding);
    EXPECT_EQ(file.shortWords, plain.shortWords);
    EXPECT_EQ(file.words, plain.words);
    EXPECT_EQ(file.skipped, plain.skipped);
    EXPECT_EQ(file.duplicates, plain.duplicates);
  }
  // Œ and œ are single bytes of code page 1252 (0x8C, 0x9C).
  EXPECT_EQ(Parsed("c\x9C" "ur\n\x8C" "uvre\n").shortWords, "COEUR\r\nOEUVRE\r\n");
}

TEST(WordFile, FilesThatAreNoListsSayWhyInFrench) {
  EXPECT_EQ(Error("# rien\n\n1234\nl'eau\n"),
            "Le fichier « liste.txt » ne contient aucun mot de 2 à 15 lettres (2 lignes ignorées).");
  EXPECT_EQ(Error(""), "Le fichier « liste.txt » ne contient aucun mot de 2 à 15 lettres.");
  EXPECT_EQ(Error(std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16)),
            "Le fichier « liste.txt » n'est pas un fichier texte : ce n'est pas une liste de mots.");
  EXPECT_EQ(Error(ToUtf16("maison\nchat\n", false).substr(2)),
            "Le fichier « liste.txt » semble écrit en UTF-16 sans marque d'ordre des octets : enregistrez-le "
            "en UTF-8 pour qu'il puisse être lu.");
  EXPECT_EQ(Error("\xEF\xBB\xBF" "caf\xE9\n"),
            "Le fichier « liste.txt » annonce de l'UTF-8 mais n'en contient pas : ce n'est pas une liste de mots "
            "lisible.");

  TempDir dir;
  std::string error;
  EXPECT_FALSE(ReadWordFile(dir.path() / "absente.txt", error));
  EXPECT_EQ(error, "Le fichier « " + (dir.path() / "absente.txt").string() + " » n'existe pas.");
  EXPECT_FALSE(ReadWordFile(dir.path(), error));
  EXPECT_EQ(error, "« " + dir.path().string() + " » est un dossier, pas une liste de mots.");
  const std::filesystem::path big = dir.path() / "grande.txt";
  WriteFile(big, "maison\n");
  std::filesystem::resize_file(big, kLargestWordFile + 1);  // sparse: nothing is written
  EXPECT_FALSE(ReadWordFile(big, error));
  EXPECT_EQ(error, "Le fichier « grande.txt » est trop grand (plus de 50 Mo) pour être une liste de mots.");
  EXPECT_FALSE(CompiledWordList::Open(big, dir.path() / "cache", error));
  EXPECT_EQ(error, "Le fichier « grande.txt » est trop grand (plus de 50 Mo) pour être une liste de mots.");
  EXPECT_FALSE(std::filesystem::exists(dir.path() / "cache"));
}

TEST(WordFile, TheCompiledCopyServesTheSameBytesAndFollowsTheirChanges) {
  TempDir dir;
  const std::filesystem::path list = dir.path() / "liste.txt", cache = dir.path() / "cache";
  WriteFile(list, "maison\nchat\nanticonformiste\nzygomatiques\nl'eau\n");
  std::string error;
  const std::optional<CompiledWordList> first = CompiledWordList::Open(list, cache, error);
  ASSERT_TRUE(first) << error;
  EXPECT_FALSE(first->Info().fromCache);
  EXPECT_TRUE(std::filesystem::exists(CompiledWordList::CopyFile(cache, first->Info().key)));
  const std::optional<CompiledWordList> again = CompiledWordList::Open(list, cache, error);
  ASSERT_TRUE(again);
  EXPECT_TRUE(again->Info().fromCache);
  for (const char* name : {"DICO", "DIC10", "DIC12", "DIC15", "M23"})
    EXPECT_EQ(again->Text(name), first->Text(name)) << name;
  EXPECT_EQ(again->Info().words, 4);
  EXPECT_EQ(again->Info().skipped, 1);
  EXPECT_EQ(again->Graph()->ToBytes(), first->Graph()->ToBytes());

  // Other bytes: another copy, the new words.
  WriteFile(list, "maison\nchats\n");
  const std::optional<CompiledWordList> changed = CompiledWordList::Open(list, cache, error);
  ASSERT_TRUE(changed);
  EXPECT_FALSE(changed->Info().fromCache);
  EXPECT_NE(changed->Info().key, first->Info().key);
  EXPECT_EQ(changed->Text("DICO"), "CHATS\r\nMAISON\r\n");
  // A damaged copy is made again.
  const std::filesystem::path copy = CompiledWordList::CopyFile(cache, changed->Info().key);
  std::filesystem::resize_file(copy, std::filesystem::file_size(copy) - 3);
  const std::optional<CompiledWordList> mended = CompiledWordList::Open(list, cache, error);
  ASSERT_TRUE(mended);
  EXPECT_FALSE(mended->Info().fromCache);
  EXPECT_TRUE(CompiledWordList::Open(list, cache, error)->Info().fromCache);
  // A cache that cannot be written costs the copy, not the list.
  WriteFile(dir.path() / "fichier", "");
  EXPECT_TRUE(CompiledWordList::Open(list, dir.path() / "fichier" / "cache", error));
}

TEST(WordFile, ARandomListIsTheLexiconsWholeVocabulary) {
  // Lists of random words, spelled in random case with accents and
  // ligatures, blank lines and junk among them: the lexicon made from each
  // holds exactly the folded words, in its tree, its long lists and its
  // graph; its short words keep the embedded definitions they have.
  std::mt19937 random(20261124);
  const std::vector<std::string> spellings[26] = {
      {"a", "A", "à", "â", "Ä"}, {"b"}, {"c", "ç", "Ç"}, {"d"}, {"e", "é", "è", "Ê", "ë"}, {"f"}, {"g"}, {"h"},
      {"i", "î", "Ï"},          {"j"}, {"k"}, {"l"},        {"m"}, {"n", "ñ"}, {"o", "ô", "Ö"}, {"p"}, {"q"},
      {"r"},                    {"s"}, {"t"}, {"u", "ù", "û", "Ü"}, {"v"}, {"w"}, {"x"}, {"y", "ÿ"}, {"z"}};
  TempDir dir;
  for (int round = 0; round < 6; ++round) {
    std::set<std::string> words;
    std::string text;
    int junk = 0;
    for (int n = 0; n < 3000; ++n) {
      const int length = 2 + int(random() % (round % 2 ? 14 : 6));
      std::string word, spelled;
      for (int k = 0; k < length; ++k) {
        const int letter = int(random() % 26);
        word += char('A' + letter);
        const auto& forms = spellings[letter];
        spelled += forms[random() % forms.size()];
      }
      if (random() % 50 == 0) {
        spelled.insert(0, random() % 2 ? "-" : "'");
        ++junk;
      } else {
        words.insert(word);
      }
      text += spelled + (random() % 3 ? "\n" : "\r\n");
      if (random() % 40 == 0) text += random() % 2 ? "\n" : "# note\n";
    }
    if (round == 2) words.insert("AA"), text += "aa\n";  // a short word with a definition
    const std::filesystem::path list = dir.path() / ("liste" + std::to_string(round) + ".txt");
    WriteFile(list, round == 3 ? Utf8ToCp1252(text) : text);
    std::string error;
    const std::optional<CompiledWordList> compiled = CompiledWordList::Open(list, dir.path() / "cache", error);
    ASSERT_TRUE(compiled) << error;
    EXPECT_EQ(compiled->Info().words, int64_t(words.size()));
    EXPECT_EQ(compiled->Info().skipped, junk);

    Lexicon lexicon;
    compiled->LoadInto(lexicon, ReadResource);
    ClsExpressions check;
    check.SubDico(lexicon);
    std::vector<std::string> graphWords;
    lexicon.Graph().ForEachWord([&](std::string_view w) { graphWords.emplace_back(w); });
    EXPECT_EQ(graphWords, std::vector<std::string>(words.begin(), words.end()));
    for (const std::string& word : words) {
      EXPECT_TRUE(check.SubWordIsTrue(std::string_view(word))) << word;
      std::string other = word;
      other.back() = other.back() == 'Z' ? 'A' : char(other.back() + 1);
      EXPECT_EQ(check.SubWordIsTrue(std::string_view(other)), words.count(other) > 0) << other;
    }
    if (round == 2) {
      EXPECT_TRUE(lexicon.DefM23.FindForCheck("AA").has_value());
    }
  }
}

TEST(WordFile, CountsReadAsFrenchText) {
  EXPECT_EQ(FrenchCount(0), "0");
  EXPECT_EQ(FrenchCount(999), "999");
  EXPECT_EQ(FrenchCount(1000), "1\u202F000");
  EXPECT_EQ(FrenchCount(402325), "402\u202F325");
  EXPECT_EQ(FrenchCount(1234567), "1\u202F234\u202F567");
}

}  // namespace
}  // namespace ostrane::test
