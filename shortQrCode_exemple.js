var FreeId=5
var tabObj = new Object();
tabObj["000000001"]="Aide de Tavrollo_|_loc../../user_datas/bienvenue.html";
tabObj["000000002"]="Premier document_|_loc../../user_datas/exemple.txt";
tabObj["000000003"]="Schéma du pont_|_loc../../user_datas/sch�ma.svg";
tabObj["000000004"]="Wikipédia, l’encyclopédie_|_webhttps://fr.wikipedia.org/";
function ShortQrCode(myKey){
var t = tabObj[myKey].split("_|_");
return t[1];
}
function NameQrCode(myKey){
var t = tabObj[myKey].split("_|_");
return t[0];
}
