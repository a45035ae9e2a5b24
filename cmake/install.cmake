# Filled by the packaging rules.
