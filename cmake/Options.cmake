# How everything of ours is compiled; linked privately by each target.
add_library(nolfa-options INTERFACE)
target_compile_options(nolfa-options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wcast-align -Wimplicit-fallthrough -Werror
  $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor;-Wold-style-cast;-Woverloaded-virtual>
  # What an initialiser leaves out takes its default: that is what designated initialisers are for.
  -Wno-missing-field-initializers
  # g++ 12 sees uninitialised members in every std::variant that is moved.
  $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-maybe-uninitialized>)
if(NOLFA_SANITIZERS)
  # For every object and program: a mix of checked and unchecked code gives false reports.
  add_compile_options(-fsanitize=${NOLFA_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${NOLFA_SANITIZERS})
endif()
