# SPDX-License-Identifier: GPL-3.0-or-later
# Who publishes Tavrollo, where, and when: the only place for public addresses. These are on a host
# that nobody owns; whoever publishes Tavrollo puts his own here.
set(TAVROLLO_PUBLISHER "Tavrollo")
set(TAVROLLO_PUBLISHER_MAIL "tavrollo@example.org")
set(TAVROLLO_APP_ID "org.example.tavrollo")
set(TAVROLLO_HOME_PAGE "https://example.org/tavrollo")
set(TAVROLLO_BUGS_PAGE "${TAVROLLO_HOME_PAGE}/bugs")
set(TAVROLLO_UPDATE_PAGE "${TAVROLLO_HOME_PAGE}/mise-a-jour.html")
set(TAVROLLO_PICTURES_PAGE "${TAVROLLO_HOME_PAGE}/images")  # the files of docs/images

# The day of the version that the project is at.
set(TAVROLLO_RELEASE_DATE "2026-11-21")
