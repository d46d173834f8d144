# Resource libraries from .rc scripts.
