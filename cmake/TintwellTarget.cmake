include(CheckCXXSymbolExists)

# Asks the compiler, because its flags may make another machine of the one that CMake sees.
check_cxx_symbol_exists(__i386__ "" TINTWELL_X86_32)

# Settings of every target of the project.
function(tintwell_target target)
  # Users of the library need no more than C++17; our own sources use designated initialisers.
  target_compile_features(${target} PUBLIC cxx_std_17 PRIVATE cxx_std_20)
  set_target_properties(${target} PROPERTIES
    AUTOMOC ON
    CXX_EXTENSIONS OFF
    POSITION_INDEPENDENT_CODE ON)
  target_compile_definitions(${target} PRIVATE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    # A time in a program would make each build differ.
    -Wdate-time)
  if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    # Qt's logging macros leave their variadic part empty.
    target_compile_options(${target} PRIVATE -Wno-gnu-zero-variadic-macro-arguments)
  endif()
  if(TINTWELL_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  # A fused multiply-add would change the last digit of resampled tables from machine to machine.
  target_compile_options(${target} PRIVATE -ffp-contract=off)
  if(TINTWELL_X86_32)
    # The x87 unit would keep more digits than single precision has. Public, because an installed
    # header computes, too.
    target_compile_options(${target} PUBLIC -msse2 -mfpmath=sse)
  endif()
  # Files beyond 2 GiB, and times beyond 2038, on 32-bit machines.
  target_compile_definitions(${target} PRIVATE _FILE_OFFSET_BITS=64 _TIME_BITS=64)
  if(TINTWELL_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${TINTWELL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=${TINTWELL_SANITIZE})
  endif()
endfunction()
