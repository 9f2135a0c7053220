# vexlor_pages(target name MANUAL words BASH words ZSH words): a program's manual page and the shells' completions, which
# the program itself prints when it is called with these words, so they name all that it knows. A build for another
# machine leaves them out.
function(vexlor_pages target name)
    if(CMAKE_CROSSCOMPILING)
        return()
    endif()
    cmake_parse_arguments(PARSE_ARGV 2 words "" "" "MANUAL;BASH;ZSH")
    foreach(page MANUAL:${name}.1 BASH:${name}.bash ZSH:_${name})
        string(REGEX MATCH "^[A-Z]+" kind ${page})
        string(REGEX REPLACE "^[A-Z]+:" "" file ${page})
        add_custom_command(OUTPUT ${file} COMMAND ${target} ${words_${kind}} > ${file} DEPENDS ${target})
        list(APPEND pages ${CMAKE_CURRENT_BINARY_DIR}/${file})
    endforeach()
    add_custom_command(OUTPUT ${name}.1.gz COMMAND gzip -9nc ${name}.1 > ${name}.1.gz DEPENDS ${name}.1)
    add_custom_target(${target}_pages ALL DEPENDS ${pages} ${CMAKE_CURRENT_BINARY_DIR}/${name}.1.gz)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}.bash RENAME ${name}
            DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/_${name} DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
endfunction()
