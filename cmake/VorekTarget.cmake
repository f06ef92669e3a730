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
  # All, or those that are named: a quick look at some beside objects that are there already.
  if(VOREK_SANITIZE_ONLY AND NOT target IN_LIST VOREK_SANITIZE_ONLY)
    if(VOREK_SANITIZE)
      target_link_options(${target} PUBLIC -fsanitize=address,undefined)
    elseif(VOREK_SANITIZE_THREADS)
      target_link_options(${target} PUBLIC -fsanitize=thread)
    endif()
    return()
  endif()
  if(VOREK_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-sanitize-recover=all
                           -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=address,undefined)
  endif()
  if(VOREK_SANITIZE_THREADS)
    target_compile_options(${target} PRIVATE -fsanitize=thread -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=thread)
  endif()
  if(VOREK_COVERAGE)
    target_compile_options(${target} PRIVATE -fprofile-instr-generate -fcoverage-mapping)
    target_link_options(${target} PUBLIC -fprofile-instr-generate)
  endif()
  if(VOREK_FUZZ)
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link,address,undefined
                           -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=address,undefined)
  endif()
endfunction()
