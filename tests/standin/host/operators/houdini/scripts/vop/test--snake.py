kwargs["node"].setUserData("made by", kwargs["type"])
