# fish completion for tamber-cli

set -l commands identify devices ports read program verify erase blank auto inspect convert
set -l with_file read program verify auto inspect convert

function __tamber_cli_devices
    tamber-cli -q devices 2>/dev/null | string sub -s 3 | string replace -r ' .*' ''
end

complete -c tamber-cli -f
complete -c tamber-cli -n "not __fish_seen_subcommand_from $commands" -a identify -d 'Ask the board for its name'
complete -c tamber-cli -n "not __fish_seen_subcommand_from $commands" -a devices -d 'List the devices'
complete -c tamber-cli -n "not __fish_seen_subcommand_from $commands" -a ports -d 'Show what COM1 to COM4 are'
complete -c tamber-cli -n "not __fish_seen_subcommand_from $commands" -a read -d 'Read the device into a HEX file'
complete -c tamber-cli -n "not __fish_seen_subcommand_from $commands" -a program -d 'Write a HEX file into the device'
complete -c tamber-cli -n "not __fish_seen_subcommand_from $commands" -a verify -d 'Compare the device with a HEX file'
complete -c tamber-cli -n "not __fish_seen_subcommand_from $commands" -a erase -d 'Erase the device'
complete -c tamber-cli -n "not __fish_seen_subcommand_from $commands" -a blank -d 'Check that the device is erased'
complete -c tamber-cli -n "not __fish_seen_subcommand_from $commands" -a auto -d 'Run the Auto series'
complete -c tamber-cli -n "not __fish_seen_subcommand_from $commands" -a inspect -d 'Look through a HEX file'
complete -c tamber-cli -n "not __fish_seen_subcommand_from $commands" -a convert -d 'Write a HEX file anew'
complete -c tamber-cli -n "__fish_seen_subcommand_from $with_file" -a '(__fish_complete_suffix .hex)'
complete -c tamber-cli -n '__fish_seen_subcommand_from program verify auto convert' -l force -d 'Take a file that is not for the device'
complete -c tamber-cli -n '__fish_seen_subcommand_from program verify auto' -l as-is -d 'Leave the words of a file where they are'
complete -c tamber-cli -n '__fish_seen_subcommand_from erase program auto' -l calibration -x -a 'keep file drop' -d 'What becomes of a calibration word'
complete -c tamber-cli -n '__fish_seen_subcommand_from verify blank auto' -l exact -d 'Compare bits that the device does not implement too'
complete -c tamber-cli -n '__fish_seen_subcommand_from inspect' -l strict -d 'Fail when anything is wrong with a file'
complete -c tamber-cli -n '__fish_seen_subcommand_from ports' -l set -x -a '1= 2= 3= 4=' -d 'Make COMn stand for a path'

complete -c tamber-cli -s C -x -a '(__fish_complete_directories)' -d 'Working folder'
complete -c tamber-cli -l device -x -a '(__tamber_cli_devices)' -d 'Device'
complete -c tamber-cli -l port -r -F -a '1 2 3 4' -d 'Serial port'
complete -c tamber-cli -l only -x -a 'pm eeprom id config' -d 'Regions that take part'
complete -c tamber-cli -l simulate -d 'Use a simulated board'
complete -c tamber-cli -l socket -r -F -d 'File that keeps the contents of its socket'
complete -c tamber-cli -l trace -r -F -d 'Write every frame and reply'
complete -c tamber-cli -l json -d 'One JSON object'
complete -c tamber-cli -s q -l quiet -d 'Say nothing of what went well'
complete -c tamber-cli -s h -l help -d 'Show the options'
complete -c tamber-cli -l version -d 'Show the version'
