# Every target of ours gets the same warnings; -Werror is switched on by scripts/test and CI.
function(zelvaine_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow)
  if(ZELVAINE_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
