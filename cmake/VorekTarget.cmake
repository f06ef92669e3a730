# What every target of the project shares: the language, the warnings, the sanitizers.
# The warnings are private, so that a consumer's build is never held to them.
function(vorek_target target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Wnon-virtual-dtor -Woverloaded-virtual -Werror
    # GCC 12 sees overlapping copies in joined texts, which aren't there, once it optimises.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
  if(VOREK_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-sanitize-recover=all
                           -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=address,undefined)
  endif()
  if(VOREK_FUZZ)
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link,address,undefined
                           -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=address,undefined)
  endif()
endfunction()
