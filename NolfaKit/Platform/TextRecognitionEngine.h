#pragma once

#include "Platform/TextLineReader.h"

#include <filesystem>

namespace nolfa {

/// Optical recognition of printed text, by Tesseract. Initialised engines are kept for the next picture, a bounded
/// number for the process. Thread-safe.
namespace TextRecognitionEngine {

/// Blocks while it reads; waits first when as many pictures are being read as there are engines.
/// @param languages  tags in order of preference, such as "fr-FR"; those without data on this machine are skipped
/// @param deadline   where the reading gives up
/// @return a line of text each, from all over the picture; none is no failure
/// @throws PlatformError when no language is left, the data is missing, the engine fails or the deadline passes;
///         CancellationError after a stop. Reading reacts within a word, finding the lines of a page does not react.
[[nodiscard]] std::vector<RecognizedLine> read(const Bitmap &image, const std::vector<std::string> &languages,
    const TextLineReader::Deadline &deadline, const std::stop_token &stop);

/// The folder of the languages' data: TESSDATA_PREFIX when that is set, else where the system has it.
/// @throws PlatformError when there is none
[[nodiscard]] std::filesystem::path dataFolder();

/// The engine's names of languages, in the same order and each once: "fr-FR", "en-US" gives "fra+eng".
/// @param folder  of their data; languages that aren't there are skipped
/// @throws PlatformError when none is left
[[nodiscard]] std::string engineLanguages(
    const std::vector<std::string> &languages, const std::filesystem::path &folder);

} // namespace TextRecognitionEngine

} // namespace nolfa
