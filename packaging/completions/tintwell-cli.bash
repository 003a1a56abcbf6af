# Completion of tintwell-cli for bash. Made by scripts/generate.

_tintwell_cli() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} words=
    local formats='cube texture unwrapped 3dl mga look discreet lut davlut csp cub itx spi1d spi3d csv nvx1d nvx3d'
    local written='cube mga discreet lut davlut itx spi1d spi3d csv nvx1d nvx3d'
    local orders='rgb bgr red-fastest blue-fastest rgb,red-fastest rgb,blue-fastest bgr,red-fastest bgr,blue-fastest'
    local commands='formats info check compare evaluate convert merge identity apply picture help'

    # The shell takes the equals sign of --to=cube for a word of its own.
    if [ "$current" = = ]; then
        current=
    elif [ "$previous" = = ]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        words="$commands --help --version"
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
        return
    fi
    case ${COMP_WORDS[1]}' '$previous in
    *' --from')
        mapfile -t COMPREPLY < <(compgen -W "$formats" -- "$current")
        return
        ;;
    'convert --to' | 'merge --to' | 'identity --to')
        mapfile -t COMPREPLY < <(compgen -W "$written" -- "$current")
        return
        ;;
    'apply --to')
        mapfile -t COMPREPLY < <(compgen -W 'png bmp tif tiff jpg jpeg' -- "$current")
        return
        ;;
    *' --in-order' | *' --out-order')
        mapfile -t COMPREPLY < <(compgen -W "$orders" -- "$current")
        return
        ;;
    *' --output-directory')
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
        return
        ;;
    *' --tolerance' | *' --size' | *' --scale' | *' --jobs' | *' --compression') return ;;
    esac
    if [[ $current != -* ]]; then
        case ${COMP_WORDS[1]} in
        help) mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$current") ;;
        *) mapfile -t COMPREPLY < <(compgen -f -- "$current") ;;
        esac
        return
    fi
    case ${COMP_WORDS[1]} in
    formats) words='--help --verbose --json' ;;
    info) words='--help --verbose --from --in-order --strict --json --sizes' ;;
    check) words='--help --verbose --from --in-order --json' ;;
    compare) words='--help --verbose --from --in-order --strict --tolerance --picture --json --force' ;;
    evaluate) words='--help --verbose --from --in-order --strict --json' ;;
    convert) words='--help --verbose --from --in-order --strict --to --size --out-order --scale --verify --force --output-directory --jobs --skip-existing --update --dry-run --quiet --json' ;;
    merge) words='--help --verbose --from --in-order --strict --to --size --out-order --scale --verify --force' ;;
    identity) words='--help --verbose --to --size --out-order --scale --verify --force' ;;
    apply) words='--help --verbose --from --in-order --to --compression --strict --force --output-directory --jobs --skip-existing --update --dry-run --quiet --json' ;;
    picture) words='--help --verbose --from --in-order --strict --force' ;;
    help) words='--help --verbose' ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

complete -o filenames -F _tintwell_cli tintwell-cli
