#!/bin/sh
# Runs a compiler, COMPILER ARGUMENT ..., with Objective-C++ sources told relative to the working
# folder. clang writes the path that it is given into the tables of GNU's runtime, where none of its
# options reaches it, and whoever built the plug-in is nobody else's business.
for argument; do
    shift
    case $argument in
    *.mm) set -- "$@" "$(realpath --relative-to=. "$argument")" ;;
    *) set -- "$@" "$argument" ;;
    esac
done
exec "$@"
