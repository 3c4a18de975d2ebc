# Every foreign library, found once.
find_package(Threads REQUIRED)
find_package(ICU 72 REQUIRED COMPONENTS uc i18n)
find_package(EXPAT 2.5 REQUIRED)
find_package(fmt 9 REQUIRED)
find_package(nlohmann_json 3.11 REQUIRED)
find_package(CLI11 2.1 REQUIRED)
find_package(PkgConfig REQUIRED)
find_package(ZLIB REQUIRED)
find_package(Qt6 6.4 REQUIRED COMPONENTS Gui DBus)

# MuPDF comes as static archives; its pkg-config file names neither all of its libraries nor its own version.
pkg_check_modules(MUPDF_LIBRARIES REQUIRED IMPORTED_TARGET
  freetype2 harfbuzz libopenjp2 gumbo mujs jbig2dec libjpeg zlib)
find_path(MUPDF_INCLUDE mupdf/fitz.h REQUIRED)
find_library(MUPDF_ARCHIVE libmupdf.a REQUIRED)
find_library(MUPDF_THIRD_ARCHIVE libmupdf-third.a REQUIRED)
add_library(mupdf INTERFACE)
target_include_directories(mupdf SYSTEM INTERFACE ${MUPDF_INCLUDE})
target_link_libraries(mupdf INTERFACE ${MUPDF_ARCHIVE} ${MUPDF_THIRD_ARCHIVE} PkgConfig::MUPDF_LIBRARIES m)

pkg_check_modules(TESSERACT REQUIRED IMPORTED_TARGET tesseract lept)
# The OpenMP library that Debian's Tesseract is linked with, whatever the compiler at hand would take.
find_library(GOMP_LIBRARY NAMES libgomp.so.1 REQUIRED)
if(NOLFA_BUILD_APP)
  find_package(Qt6 6.4 REQUIRED COMPONENTS DBus Quick QuickTest Svg Test)
endif()
if(NOLFA_BUILD_TESTS)
  find_package(GTest REQUIRED)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
endif()
if(NOLFA_BUILD_BENCHMARKS)
  find_package(benchmark REQUIRED)
endif()
