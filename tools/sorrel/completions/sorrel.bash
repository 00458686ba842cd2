# SPDX-License-Identifier: LGPL-2.1-or-later
# Completions of sorrel(1) for bash.
# shellcheck shell=bash

# _sorrel_files PATTERN: offers directories, and files with an extension in PATTERN.
_sorrel_files() {
    local pattern=$1
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$current"; compgen -f -X "!*.@($pattern)" -- "$current")
}

_sorrel() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local commands="info manifest resources icon files lint verify diff desktop scan catalog find"
    local packages="apk|apks|xapk|apkm|APK|APKS|XAPK|APKM"
    local scan="-0 --null -j --jobs --max-memory --timeout --no-progress"
    local kinds="all launcher television car car-service watch-face home-screen tile wallpaper input-method screen-saver"
    kinds+=" widget share-target direct-share instant shortcut"
    local options="-h --help" extglob_was_off=
    COMPREPLY=()
    # The shell needs extglob for the pattern in _sorrel_files.
    shopt -q extglob || { extglob_was_off=yes; shopt -s extglob; }

    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W "$commands -h --help -v --version" -- "$current")
    else
        case ${COMP_WORDS[1]} in
        info) options+=" --json --all --entries --signer --device --platform" ;;
        manifest) options+=" --ids --platform" ;;
        resources) options+=" --json --platform" ;;
        files) options+=" --json" ;;
        icon) options+=" -s --size --shape --launcher --round --night --monochrome --rtl --banner --frames --theme -o --output --platform" ;;
        lint) options+=" --json --draw --checks --platform" ;;
        verify) options+=" --json --print-certs --min-sdk --max-sdk --fingerprint --same-as --v4-signature" ;;
        diff) options+=" --json --all --html" ;;
        desktop) options+=" -o --output --exec --shape --all --json --platform" ;;
        scan) options+=" $scan --ordered --all --icon --lint --verify --index --platform" ;;
        catalog) options+=" $scan -o --output --title --shape --verify --index --platform" ;;
        find) options+=" --index --json" ;;
        esac
        case ${COMP_WORDS[1]}:$previous in
        *:--shape)
            mapfile -t COMPREPLY < <(compgen -W "none circle rounded squircle" -- "$current")
            ;;
        info:--entries) mapfile -t COMPREPLY < <(compgen -W "$kinds" -- "$current") ;;
        desktop:-o | desktop:--output | icon:--frames)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -d -- "$current")
            ;;
        info:--device) _sorrel_files "json" ;;
        icon:-o | icon:--output) _sorrel_files "png" ;;
        catalog:-o | catalog:--output | diff:--html) _sorrel_files "html" ;;
        *:--index) _sorrel_files "db" ;;
        verify:--v4-signature) _sorrel_files "idsig" ;;
        *:-s | *:--size | *:--icon) mapfile -t COMPREPLY < <(compgen -W "48 96 192 512" -- "$current") ;;
        *:-j | *:--jobs | *:--max-memory | *:--timeout | *:--title | *:--exec | *:--launcher | \
            *:--min-sdk | *:--max-sdk | *:--fingerprint) ;;
        *)
            if [[ $current == -* ]]; then
                mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
            else
                _sorrel_files "$packages"
            fi
            ;;
        esac
    fi
    [ -z "$extglob_was_off" ] || shopt -u extglob
}

complete -F _sorrel sorrel
