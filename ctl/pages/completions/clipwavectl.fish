# Completion of clipwavectl for fish; the companion itself says what there is.

function __clipwavectl_complete
    set -l words (commandline -opc)
    set -l typed (commandline -ct)
    # Unquoted, as far as the quote is closed; one that is open is not part of the word.
    set -l plain (string unescape -- $typed; or string replace -r '^["\']' '' -- $typed)
    for line in ($words[1] --complete $words[2..] "$plain" 2>/dev/null </dev/null)
        if string match -q \t\* -- $line
            set -l before (string sub -s 2 -- $line)
            set -l path (string replace -- "$before" '' "$plain")
            __fish_complete_path $path | string replace -r '^' "$before"
        else
            printf '%s\n' $line
        end
    end
end

complete -c clipwavectl -f -a '(__clipwavectl_complete)'
