# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later

# Brings what was installed for the package into the form that Debian asks for.
set(SHARE ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)

# A build that was told to leave the manual out, or to put something elsewhere, is no package's.
foreach(NEEDED bin/miolkasoft lib/udev/rules.d/70-miolkasoft.rules
        libexec/miolkasoft/MIOLKAsoftHELP.pdf libexec/miolkasoft/miolkasoft)
    if(NOT EXISTS ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/${NEEDED})
        message(FATAL_ERROR "/usr/${NEEDED} would be missing from the package.")
    endif()
endforeach()

file(RENAME ${SHARE}/doc/miolkasoft/CHANGELOG.md ${SHARE}/doc/miolkasoft/changelog)
file(RENAME ${SHARE}/zsh/site-functions ${SHARE}/zsh/vendor-completions)

file(GLOB PAPERS ${SHARE}/man/man*/* ${SHARE}/doc/miolkasoft/changelog*)
execute_process(COMMAND gzip -9n ${PAPERS} COMMAND_ERROR_IS_FATAL ANY)

file(GLOB CANDIDATES ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/bin/*
    ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/libexec/miolkasoft/miolkasoft)
foreach(PROGRAM IN LISTS CANDIDATES)
    if(NOT IS_SYMLINK ${PROGRAM})
        execute_process(COMMAND strip --remove-section=.comment --remove-section=.note ${PROGRAM}
            COMMAND_ERROR_IS_FATAL ANY)
    endif()
endforeach()

# Whatever umask the builder has.
file(CHMOD_RECURSE ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
