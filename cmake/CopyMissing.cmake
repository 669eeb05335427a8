# Copies the files of FROM that TO does not have yet.
file(MAKE_DIRECTORY ${TO})
file(GLOB names RELATIVE ${FROM} ${FROM}/*)
foreach(name ${names})
    if(NOT EXISTS ${TO}/${name})
        file(COPY ${FROM}/${name} DESTINATION ${TO})
    endif()
endforeach()
