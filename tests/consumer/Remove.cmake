# What Install.cmake and those behind it made.
file(REMOVE_RECURSE "${WORK}")
