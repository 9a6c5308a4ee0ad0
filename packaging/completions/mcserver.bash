# SPDX-License-Identifier: Apache-2.0
# Completion of mcserver for bash, made from its --help by make.py.

_mcserver() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    case $previous in
        --listen|--sessions|--memory|--text-length|--comment-length|--device|--name|--nats|--station) return ;;
        --tls-cert|--tls-key|--tls-ca|--access|--config|--script|--nats-creds|--nats-seed|--nats-ca|--nats-cert|--nats-key) COMPREPLY=($(compgen -f -- "$current")); return ;;
        --screenshot) COMPREPLY=($(compgen -d -- "$current")); return ;;
    esac
    COMPREPLY=($(compgen -W "-h --help --help-all -v --version --listen --tls-cert --tls-key --tls-ca --insecure --access --config --sessions --memory --text-length --comment-length --device --script --name --nats --station --nats-creds --nats-seed --nats-tls --nats-ca --nats-cert --nats-key --headless --screenshot --install-service --remove-service --service --make-token" -- "$current"))
}

complete -F _mcserver mcserver
